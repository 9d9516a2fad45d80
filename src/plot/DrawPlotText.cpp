#include "plot/DrawPlotText.h"

namespace quorvex {

void DrawPlotText(DrawingSurface& surface, const PlotText& text, const PlotTextFonts& fonts, std::int32_t x,
                  std::int32_t y, TextDirection direction) {
  for (const PlotTextSegment& segment : text.Segments) {
    const Selection font(surface, segment.Kind == 0 ? fonts.Normal : fonts.Script);
    if (direction == TextDirection::Upward)
      surface.TextOutA(x + segment.Y, y - segment.X, segment.Text);
    else
      surface.TextOutA(x + segment.X, y + segment.Y, segment.Text);
  }
}

}  // namespace quorvex
