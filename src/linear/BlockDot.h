#pragma once

#include <cstddef>

namespace quorvex {

// Sum of a[i] * b[i] over a block, in an order that is the same on every machine: eight running sums, of the points
// whose number leaves 0, 1, ... 7 divided by 8, added up pairwise at the end: ((0+4)+(2+6))+((1+5)+(3+7)).
double BlockDot(const double* a, const double* b, std::size_t n);

// BlockDot(a[j], b[k], n) for all k <= j of `count` columns each, row j after row j - 1, several at a time: one alone
// waits for its own additions, and loads each factor for itself.
void TriangleOfDots(const double* const* a, const double* const* b, std::size_t count, std::size_t n, double* out);

}  // namespace quorvex
