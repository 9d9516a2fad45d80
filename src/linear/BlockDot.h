#pragma once

#include <cstddef>

namespace quorvex {

// Sum of a[i] * b[i] over a block, in an order that is the same on every machine: eight running sums, of the points
// whose number leaves 0, 1, ... 7 divided by 8, added up pairwise at the end: ((0+4)+(2+6))+((1+5)+(3+7)).
double BlockDot(const double* a, const double* b, std::size_t n);

}  // namespace quorvex
