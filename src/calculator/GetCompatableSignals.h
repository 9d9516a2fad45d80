#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "engine/SeriesTable.h"

namespace quorvex {

// Two curves on one grid.
struct CompatableSignals {
  std::vector<double> X, Y1, Y2;
};

// Brings two curves onto one grid: every X of either one between the start of the one that begins last and the end of
// the one that ends first, ascending and once each. Points of a curve with the same X become one with the mean of
// their Y, and between its points a curve is a straight line. Curves may be in any order.
//
// Takes time in proportion to the points where they are in order. Throws CalculatorFault (NoCommonGrid) where the
// curves do not overlap, or a mean or a slope overflows.
CompatableSignals GetCompatableSignals(SeriesTable first, SeriesTable second);

// The index, from 1, of the first element from `start` on that is greater than `value`; one beyond the last where none
// is.
std::size_t getnextindex(std::span<const double> x, double value, std::size_t start);

}  // namespace quorvex
