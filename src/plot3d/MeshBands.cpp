#include "plot3d/MeshBands.h"

#include <algorithm>
#include <cassert>

#include "core/NumberText.h"
#include "plot3d/MeshSchemes.h"

namespace quorvex {
namespace {

constexpr int kFull = 255;

std::int32_t Colour(int red, int green, int blue) { return red | green << 8 | blue << 16; }

// Rounded to the nearest.
int Channel(ChannelCourse course, int band, int bands) {
  switch (course) {
    case ChannelCourse::None:
      return 0;
    case ChannelCourse::All:
      return kFull;
    case ChannelCourse::Rising:
      return RoundToInt32(1.0 * kFull * band / (bands - 1));
    case ChannelCourse::Falling:
      return RoundToInt32(kFull - 1.0 * kFull * band / (bands - 1));
  }
  return 0;
}

// At place 1 to 1276 of a walk in five legs: red, yellow, green, cyan, blue, magenta.
std::int32_t SpectrumColour(int t) {
  if (t <= 255) return Colour(kFull, t - 1, 0);
  if (t <= 510) return Colour(511 - t, kFull, 0);
  if (t <= 765) return Colour(0, kFull, t - 511);
  if (t <= 1020) return Colour(0, 1021 - t, kFull);
  return Colour(std::min(t - 1020, kFull), 0, kFull);
}

}  // namespace

HeightRange ColourRange(const HeightRange& surface, const HeightRange& limits, bool UseAxisScale) {
  HeightRange range = limits;
  if (!UseAxisScale) range = {std::max(surface.Low, limits.Low), std::min(surface.High, limits.High)};
  if (range.Low == range.High) range = {range.Low - 1, range.High + 1};
  return range;
}

std::vector<double> BandLevels(const HeightRange& range, int bands) {
  std::vector<double> levels;
  for (int k = 0; k <= bands; ++k) levels.push_back(range.Low + k * (range.High - range.Low) / bands);
  return levels;
}

std::size_t FindBand(std::span<const double> levels, std::size_t start, double value) {
  const std::size_t first = std::max<std::size_t>(start, 1);
  const auto level = std::lower_bound(levels.begin() + static_cast<std::ptrdiff_t>(first), levels.end(), value);
  return std::min(static_cast<std::size_t>(level - levels.begin()), levels.size() - 1);
}

std::vector<std::int32_t> BandColours(int bands, int scheme) {
  assert(bands >= 2);
  std::vector<std::int32_t> colours;
  for (int k = 0; k < bands; ++k) {
    const auto channel = [&](ChannelCourse course) { return Channel(course, k, bands); };
    const MeshSchemeRow& courses = kMeshSchemeRows[static_cast<std::size_t>(scheme)];
    colours.push_back(scheme == kSpectrumScheme
                          ? SpectrumColour(1 + k * 1275 / (bands - 1))
                          : Colour(channel(courses.Red), channel(courses.Green), channel(courses.Blue)));
  }
  return colours;
}

std::vector<std::int32_t> ShadeRamp(std::int32_t colour) {
  std::vector<std::int32_t> ramp;
  for (int k = 0; k <= kFull; ++k) {
    const auto channel = [&](int shift) { return RoundToInt32((colour >> shift & kFull) * k / 255.0); };
    ramp.push_back(Colour(channel(0), channel(8), channel(16)));
  }
  return ramp;
}

}  // namespace quorvex
