#pragma once

#include <span>

namespace quorvex {

// The points of a series as it is drawn, of equal length. A view: it holds until the series gets another table.
struct SeriesTable {
  std::span<const double> X, Y;
};

// The ends of the error bars of a series, one of each per input point. A view, as above; empty without error data.
struct ErrorTable {
  std::span<const double> Max, Min;
};

}  // namespace quorvex
