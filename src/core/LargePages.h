#pragma once

#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quorvex {

// Asks the system to back the room that a long array has reserved with pages of 2 MB: a million fresh numbers then
// cost a handful of page faults in place of two thousand. A wish, not a need: where it is refused nothing changes.
inline void PreferLargePages(std::vector<double>& array) {
  constexpr std::uintptr_t kLargePage = std::uintptr_t{1} << 21;
  const auto begin = reinterpret_cast<std::uintptr_t>(array.data());
  const std::uintptr_t first = (begin + kLargePage - 1) / kLargePage * kLargePage;
  const std::uintptr_t last = (begin + array.capacity() * sizeof(double)) / kLargePage * kLargePage;
  if (first < last) madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
}

}  // namespace quorvex
