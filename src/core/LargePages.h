#pragma once

#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quorvex {

// Asks the system to back a long stretch of memory with pages of 2 MB: a million fresh numbers then cost a handful of
// page faults in place of two thousand. The edges are asked for, too, since a neighbour may have the rest of their
// pages. A wish, not a need: where it is refused nothing changes.
inline void PreferLargePages(const void* memory, std::size_t size) {
  constexpr std::size_t kLargePage = std::size_t{1} << 21, kPage = 4096;
  if (size < kLargePage) return;
  const auto begin = reinterpret_cast<std::uintptr_t>(memory), first = begin / kPage * kPage;
  madvise(reinterpret_cast<void*>(first), begin + size - first, MADV_HUGEPAGE);
}

// Gives an array room for so many elements, on such pages.
template <typename T>
void ReserveLarge(std::vector<T>& array, std::size_t size) {
  array.reserve(size);
  PreferLargePages(array.data(), array.capacity() * sizeof(T));
}

// A copy on such pages.
inline std::vector<double> LargeCopy(std::span<const double> array) {
  std::vector<double> copy;
  ReserveLarge(copy, array.size());
  copy.assign(array.begin(), array.end());
  return copy;
}

}  // namespace quorvex
