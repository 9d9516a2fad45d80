#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "drawing/DrawingSurface.h"
#include "drawing/LinePattern.h"

namespace quorvex {

// The pen of an outline; lengths in pixels. The ends of its strokes are round, and so are the corners of a solid line.
struct CanvasPen {
  double Width = 1;
  std::int32_t Colour = 0;  // 0x00BBGGRR
  LinePattern Pattern = {};
  bool FlatEnds = false;  // of the strokes instead
};

// Paints the facets of a surface, many thousand to a picture, straight on its pixels, which are 0xFFRRGGBB.
//
// A pixel has kUnitsPerPixel device units each way, and its middle is a whole number of pixels: pixel 3's is 24.
// Fill and Shade paint the pixels whose middle lies inside, by the even-odd rule. A middle on an edge belongs to what
// is right of it, or below where the edge is level; so of facets with common corners each pixel goes to exactly one.
// Corners farther off than kFarthest units, above a hundred million pixels, count as lying there.
class PixelCanvas {
 public:
  static constexpr std::int32_t kUnitsPerPixel = 8;
  static constexpr std::int32_t kFarthest = 1 << 30;

  // Columns from Left to Right and rows from Top to Bottom, the last ones not included.
  struct Area {
    int Left = 0, Top = 0, Right = 0, Bottom = 0;
  };

  // The pixels outlive the canvas; `stride` is from one row's first to the next one's.
  PixelCanvas(std::uint32_t* pixels, std::ptrdiff_t stride, int width, int height);

  // From now on nothing is painted outside; what lies beyond the picture is left away.
  void SetClip(const Area& area);
  void LiftClip() { SetClip({0, 0, width_, height_}); }

  void Fill(std::span<const DevicePoint> polygon, std::int32_t colour);

  // Fills a triangle with the colours of DrawingSurface::ShadeTriangle.
  void Shade(const std::array<DevicePoint, 3>& corners, const std::array<double, 3>& places,
             std::span<const std::int32_t> ramp);

  // The line round a polygon, with smoothed edges: a pixel takes as much of the pen's colour as the pen covers of it,
  // and no more where two sides cover it. A pattern begins at the first corner.
  void Outline(std::span<const DevicePoint> polygon, const CanvasPen& pen);

 private:
  // Raises the coverage of pixels and notes which they are. It does without branches, which would be mistaken as often
  // as not and cost more than all the rest.
  struct Raiser {
    std::uint8_t* Coverage;
    std::ptrdiff_t* Next;

    // To so much of 255, where it isn't more already.
    void Raise(std::ptrdiff_t place, int cover) {
      Coverage[place] = static_cast<std::uint8_t>(std::max<int>(Coverage[place], std::clamp(cover, 0, 255)));
      *Next++ = place;
    }
  };
  Raiser RaiserOf(int columns, int rows);  // for so many pixels
  void Take(const Raiser& raiser) { covered_ = static_cast<std::size_t>(raiser.Next - places_.data()); }

  template <typename Paint>
  void EachRun(std::span<const DevicePoint> polygon, Paint paint);
  void CrossRows(DevicePoint a, DevicePoint b, const Area& rows, std::size_t corners);
  void Cover(ExactPoint from, ExactPoint to, double width, bool thin, bool flatEnds);
  void Ink(std::int32_t colour);
  std::uint32_t* Row(int row) const { return pixels_ + row * stride_; }

  std::uint32_t* pixels_;
  std::ptrdiff_t stride_;
  int width_, height_;
  Area clip_;

  // Kept from polygon to polygon, lest each take memory of its own.
  std::vector<int> crossings_;        // where edges cross the rows of a polygon: room for all of its edges in each row,
  std::vector<std::size_t> crossed_;  // of which so many are taken
  std::vector<std::uint8_t> coverage_;  // of each pixel by the pen, 255 the whole; 0 between outlines
  std::vector<std::ptrdiff_t> places_;  // of the pixels that it was raised of, some of them twice; the first `covered_`
  std::size_t covered_ = 0;
};

}  // namespace quorvex
