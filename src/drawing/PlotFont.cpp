#include "drawing/PlotFont.h"

#include "core/NumberText.h"

namespace quorvex {

SurfaceObject CreatePlotFont(const PlotFont& font, int angle, DrawingSurface& surface, int percent) {
  constexpr std::size_t kLongestName = 32;
  constexpr std::int32_t kPointsPerInch = 72;
  LogicalFont logical;
  logical.Height =
      -MulDiv(RoundToInt32(font.Size * percent / 100), surface.GetDeviceCaps(DeviceCap::LOGPIXELSY), kPointsPerInch);
  logical.Escapement = angle * 10;
  logical.Weight = font.Bold ? 700 : 400;
  logical.Italic = font.Italic;
  logical.FaceName = FirstCharacters(font.Name, kLongestName);
  return {surface, surface.CreateFontIndirectA(logical)};
}

}  // namespace quorvex
