#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "plot3d/MeshCell.h"

namespace quorvex {

// The heights that the colours of a surface span: those of the surface within the limits of the axis, or the limits
// themselves. A range of zero is widened by 1 each way.
HeightRange ColourRange(const HeightRange& surface, const HeightRange& limits, bool UseAxisScale);

// The levels between which the bands lie, from the lower end of a range to the upper: one more than there are bands.
// Band k, from 1, lies between levels k - 1 and k.
std::vector<double> BandLevels(const HeightRange& range, int bands);

// The first band at or after `start` whose upper level is not below the value; the last one for values past the end.
std::size_t FindBand(std::span<const double> levels, std::size_t start, double value);

// A colour for each band, of 2 or more, from low to high in one of the MeshSchemes, but for kTrueColorScheme.
std::vector<std::int32_t> BandColours(int bands, int scheme);

// The colours of a surface in shades of one, from black to the colour itself.
std::vector<std::int32_t> ShadeRamp(std::int32_t colour);

}  // namespace quorvex
