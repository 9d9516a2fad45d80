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
  constexpr std::size_t kLine = 64 / sizeof(double);
  const std::size_t end = std::min(first + n, data.N());
  for (std::size_t i = first; i < end; i += kLine) {
    for (const std::vector<double>& column : data.X) __builtin_prefetch(&column[i]);
    __builtin_prefetch(&data.Y[i]);
    if (withWeights) __builtin_prefetch(&data.sig[i]);
  }
}

}  // namespace quorvex
