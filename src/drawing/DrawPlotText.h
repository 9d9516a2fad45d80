#pragma once

#include "drawing/PlotText.h"

namespace quorvex {

// The fonts of a text with codes on a surface, made once for all that is drawn in them.
struct PlotTextFonts {
  SurfaceObject Normal, Script;

  PlotTextFonts(DrawingSurface& surface, const PlotFont& font, int angle)
      : Normal(CreatePlotFont(font, angle, surface)), Script(CreatePlotFont(font, angle, surface, kScriptPercent)) {}
};

// Draws a text from its upper left corner at (x, y), its line turned by `angle` degrees against the clock about there,
// in fonts of that angle. The colour and the transparent ground are the caller's to set.
void DrawPlotText(DrawingSurface& surface, const PlotText& text, const PlotTextFonts& fonts, std::int32_t x,
                  std::int32_t y, int angle = 0);

}  // namespace quorvex
