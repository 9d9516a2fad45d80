#pragma once

#include <cstddef>

namespace quorvex {

// The most that a model may have. Files, macros and windows count by the same numbers.
inline constexpr int kMostIndependentVariables = 20;
inline constexpr int kMostCoefficients = 100;
inline constexpr int kMostFunctionLines = 10;  // the model line and F1 to F9

// Points of the data that are evaluated together.
inline constexpr std::size_t kBlock = 256;

// Columns that are kept of a text or spreadsheet file, and of one that is read as a series, as many as spreadsheets
// have.
inline constexpr std::size_t kMostColumnsRead = 256, kMostSeriesColumns = 16'384;

}  // namespace quorvex
