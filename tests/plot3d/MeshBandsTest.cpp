#include <gtest/gtest.h>

#include "plot3d/MeshBands.h"
#include "plot3d/PlotClass3D.h"

namespace quorvex {
namespace {

TEST(ColourRange, IsThatOfTheSurfaceOrOfTheAxis) {
  const struct {
    HeightRange surface, limits;
    bool useAxisScale;
    HeightRange expected;
  } kCases[] = {
      {{2, 5}, {0, 10}, false, {2, 5}},    {{2, 5}, {0, 10}, true, {0, 10}}, {{-2, 50}, {0, 10}, false, {0, 10}},
      {{-2, 5}, {0, 10}, false, {0, 5}},   {{4, 4}, {0, 10}, false, {3, 5}},  // flat
      {{10, 12}, {0, 10}, false, {9, 11}},                                    // touches the limit
      {{4, 4}, {0, 10}, true, {0, 10}},
  };
  for (const auto& c : kCases) {
    const HeightRange range = ColourRange(c.surface, c.limits, c.useAxisScale);
    EXPECT_EQ(range.Low, c.expected.Low);
    EXPECT_EQ(range.High, c.expected.High);
  }
}

TEST(BandLevels, DivideTheRangeEvenly) {
  EXPECT_EQ(BandLevels({0, 1}, 4), (std::vector<double>{0, 0.25, 0.5, 0.75, 1}));
  EXPECT_EQ(BandLevels({-3, 5}, 2), (std::vector<double>{-3, 1, 5}));
}

TEST(FindBand, IsTheFirstWhoseUpperLevelReachesTheValue) {
  const std::vector<double> levels = {0, 10, 20, 30};
  const struct {
    std::size_t start;
    double value;
    std::size_t band;
  } kCases[] = {{1, -5, 1}, {1, 0, 1},  {1, 10, 1}, {1, 10.5, 2}, {1, 20, 2}, {1, 30, 3},
                {1, 99, 3}, {0, -5, 1}, {2, 5, 2},  {2, 25, 3},   {3, 5, 3},  {3, 99, 3}};
  for (const auto& c : kCases) EXPECT_EQ(FindBand(levels, c.start, c.value), c.band) << c.start << ' ' << c.value;
}

TEST(BandColours, GoFromTheFirstBandToTheLast) {
  // 0x00BBGGRR. The middle one of three bands, half of 255 away from both ends, is rounded to 128.
  const struct {
    int scheme;
    std::vector<std::int32_t> three;
  } kCases[] = {
      {0, {0x000000, 0x808080, 0xFFFFFF}},  {1, {0x000000, 0x000080, 0x0000FF}},  {2, {0x000000, 0x800000, 0xFF0000}},
      {3, {0x000000, 0x008000, 0x00FF00}},  {4, {0x000000, 0x808000, 0xFFFF00}},  {5, {0xFF0000, 0x800080, 0x0000FF}},
      {6, {0x00FF00, 0x008080, 0x0000FF}},  {7, {0x00FF00, 0x808000, 0xFF0000}},  {10, {0x0000FF, 0x8080FF, 0xFFFFFF}},
      {11, {0xFF0000, 0xFF8080, 0xFFFFFF}}, {12, {0x00FF00, 0x80FF80, 0xFFFFFF}}, {13, {0xFFFF00, 0xFFFF80, 0xFFFFFF}},
  };
  for (const auto& [scheme, three] : kCases) {
    EXPECT_EQ(BandColours(3, scheme), three) << scheme;
    EXPECT_EQ(BandColours(2, scheme), (std::vector<std::int32_t>{three[0], three[2]})) << scheme;
  }
  EXPECT_EQ(BandColours(6, 0), (std::vector<std::int32_t>{0, 0x333333, 0x666666, 0x999999, 0xCCCCCC, 0xFFFFFF}));
}

TEST(BandColours, WalkThroughTheSpectrum) {
  // At places 1, 128, 256, 383, 511, 638, 766, 893, 1021, 1148 and 1276 of the walk, halves cut off.
  EXPECT_EQ(BandColours(11, kSpectrumScheme),
            (std::vector<std::int32_t>{0x0000FF, 0x007FFF, 0x00FFFF, 0x00FF80, 0x00FF00, 0x7FFF00, 0xFFFF00, 0xFF8000,
                                       0xFF0001, 0xFF0080, 0xFF00FF}));
  EXPECT_EQ(BandColours(2, kSpectrumScheme), (std::vector<std::int32_t>{0x0000FF, 0xFF00FF}));
  // 1, 426, 851 and 1276.
  EXPECT_EQ(BandColours(4, kSpectrumScheme), (std::vector<std::int32_t>{0x0000FF, 0x00FF55, 0xFFAA00, 0xFF00FF}));
}

TEST(ShadeRamp, LeadsFromBlackToTheColour) {
  const std::vector<std::int32_t> ramp = ShadeRamp(0x80FF05);
  ASSERT_EQ(ramp.size(), 256u);
  EXPECT_EQ(ramp[0], 0);
  EXPECT_EQ(ramp[51], 0x1A3301);  // a fifth: 25.6, 51 and 1
  EXPECT_EQ(ramp[255], 0x80FF05);
}

}  // namespace
}  // namespace quorvex
