#pragma once

#include <cstdint>
#include <string>

namespace quorvex {

// How a series looks in a plot. Colours are 0x00BBGGRR.
struct SeriesStyle {
  std::string LegendText = "";  // empty: not in the legend
  bool DisplayLine = true;
  bool DisplayMarker = false;
  int DrawStyle = 0;  // 0 solid to 4 dash-dot-dot
  int DrawWidth = 1;
  std::int32_t DrawColor = 0;
  int MarkerStyle = 0;  // 0 to 9
  std::int32_t MarkerColor = 0;
  std::int32_t MarkerSize = 5;  // points
  bool ShowErrorBars = false;
  bool ShadeMesh = false;  // of a surface
  std::int32_t ShadeColor = 0;
  std::int32_t Bands = 0;      // around the curve of a model, a BandKind
  std::int32_t BandLevel = 2;  // the place of their level in kLimitLevels

  bool operator==(const SeriesStyle&) const = default;
};

}  // namespace quorvex
