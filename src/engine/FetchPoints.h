#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "core/SolveData.h"

namespace quorvex {

// Has the processor fetch points that are to be computed soon, as far as there are so many: the way to them through the
// caches is long, and the work of the block before them hides it. Always inlined, since the compiler leaves out calls
// of a function that has no other effect.
[[gnu::always_inline]] inline void FetchPoints(const SolveData& data, std::size_t first, std::size_t n,
                                               bool withWeights) {
  const std::size_t end = std::min(first + n, data.N());
  const auto fetch = [&](const std::vector<double>& column) __attribute__((always_inline)) {
    constexpr std::size_t kLine = 64 / sizeof(double);
    for (std::size_t i = first; i < end; i += kLine) __builtin_prefetch(column.data() + i);
  };
  for (const std::vector<double>& column : data.X) fetch(column);
  fetch(data.Y);
  if (withWeights) fetch(data.sig);
}

}  // namespace quorvex
