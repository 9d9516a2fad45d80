#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include "core/Settings.h"
#include "drawing/DrawingSurface.h"

namespace quorvex {

// Left, top, right and bottom edge, or a distance from each.
struct DeviceRect {
  std::int32_t left = 0, top = 0, right = 0, bottom = 0;

  std::int32_t width() const { return right - left; }
  std::int32_t height() const { return bottom - top; }
  // As high as wide, by the smaller of the two, from the same upper left corner.
  DeviceRect Squared() const {
    const std::int32_t side = std::min(width(), height());
    return {left, top, left + side, top + side};
  }
  bool Contains(double x, double y) const { return x >= left && x <= right && y >= top && y <= bottom; }
  bool operator==(const DeviceRect&) const = default;
};

// How a plot is put on paper; other surfaces take no notice of it.
struct PageSetup {
  double Left = 0.25, Top = 0.25, Right = 0.25, Bottom = 0.25;  // margins, in `Units`
  std::string Units = "inches";                                 // or "mm", "cm"
  bool PrintBackground = false;

  // As the settings store has it.
  static PageSetup Read(const Settings& settings);
};

// The margins in units of the printer.
DeviceRect ConvertMargins(const PageSetup& page, const DrawingSurface& printer);

// The message for margins that leave no room on a sheet of that size, else nothing.
std::optional<std::string> CheckMargins(const DeviceRect& margins, std::int32_t pageWidth, std::int32_t pageHeight);

}  // namespace quorvex
