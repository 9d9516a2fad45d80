#include "drawing/DrawPlotText.h"

#include <cmath>
#include <numbers>

namespace quorvex {

void DrawPlotText(DrawingSurface& surface, const PlotText& text, const PlotTextFonts& fonts, std::int32_t x,
                  std::int32_t y, int angle) {
  const double turn = angle * std::numbers::pi / 180, along = std::cos(turn), up = std::sin(turn);
  const auto unit = [](double value) { return static_cast<std::int32_t>(std::lrint(value)); };
  for (const PlotTextSegment& segment : text.Segments) {
    const Selection font(surface, segment.Kind == 0 ? fonts.Normal : fonts.Script);
    surface.TextOutA(x + unit(segment.X * along + segment.Y * up), y + unit(segment.Y * along - segment.X * up),
                     segment.Text);
  }
}

}  // namespace quorvex
