#pragma once

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "plot/PlotPage.h"

namespace quorvex {

// Points on the device, where one on the same unit as the one before it drops out.
class DevicePoints {
 public:
  DevicePoints(std::span<const double> x, std::span<const double> y, const PlotPicture& picture, bool SwapAxis)
      : across_(x.size()), down_(x.size()) {
    if (SwapAxis) std::swap(x, y);
    for (std::size_t i = 0; i < x.size(); ++i) {
      const std::int32_t across = picture.Horizontal.ToDevice(x[i]), down = picture.Vertical.ToDevice(y[i]);
      if (count_ > 0 && across == across_[count_ - 1] && down == down_[count_ - 1]) continue;
      across_[count_] = across;
      down_[count_++] = down;
    }
  }
  std::span<const std::int32_t> Across() const { return {across_.data(), count_}; }
  std::span<const std::int32_t> Down() const { return {down_.data(), count_}; }

 private:
  std::vector<std::int32_t> across_, down_;
  std::size_t count_ = 0;
};

}  // namespace quorvex
