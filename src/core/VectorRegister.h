#pragma once

#include <cstddef>
#include <cstdint>

namespace quorvex {

// A vector register of so many doubles, for loops run by AtFullWidth (core/VectorWidth.h), and what a comparison of two
// of them gives: all bits set where it holds.
template <std::size_t lanes>
struct VectorRegister {
  using Type [[gnu::vector_size(lanes * sizeof(double))]] = double;
  using Mask [[gnu::vector_size(lanes * sizeof(double))]] = std::int64_t;
};

}  // namespace quorvex
