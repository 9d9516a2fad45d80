#pragma once

#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quorvex {

// Asks the system to back a long stretch of memory with pages of 2 MB: a million fresh numbers then cost a handful of
// page faults in place of two thousand. A wish, not a need: where it is refused nothing changes.
inline void PreferLargePages(const void* memory, std::size_t size) {
  constexpr std::uintptr_t kLargePage = std::uintptr_t{1} << 21;
  const auto begin = reinterpret_cast<std::uintptr_t>(memory);
  const std::uintptr_t first = (begin + kLargePage - 1) / kLargePage * kLargePage;
  const std::uintptr_t last = (begin + size) / kLargePage * kLargePage;
  if (first < last) madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
}

// The same for the room that an array has reserved.
inline void PreferLargePages(const std::vector<double>& array) {
  PreferLargePages(array.data(), array.capacity() * sizeof(double));
}

}  // namespace quorvex
