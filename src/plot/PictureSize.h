#pragma once

#include <cmath>

namespace quorvex {

// A picture's size in pixels, and how many of them are an inch.
struct PictureSize {
  int Width = 0, Height = 0;
  double PixelsPerInch = 96;

  // The same size in inches, at another resolution.
  PictureSize At(double pixelsPerInch) const {
    const auto scaled = [&](int pixels) {
      return static_cast<int>(std::lround(pixels * pixelsPerInch / PixelsPerInch));
    };
    return {scaled(Width), scaled(Height), pixelsPerInch};
  }
};

}  // namespace quorvex
