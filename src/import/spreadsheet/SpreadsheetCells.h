#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "core/Limits.h"
#include "core/SerialDate.h"
#include "sheet/GridCells.h"

namespace quorvex {

// The cells of a spreadsheet's sheet on their way into a grid, counted from 1. A few bytes of a file can stand for
// millions of repeated cells, so what they take in memory is counted before it is taken.
class SpreadsheetCells {
 public:
  static constexpr std::size_t kMostRows = 1 << 20;

  // Each returns false, and stores nothing, where the sheet grows too large. Cells in columns that are not kept are
  // counted only.
  bool SetNumber(std::size_t row, std::size_t col, double value);
  // A number that the sheet shows as a date or time of that form.
  bool SetDay(std::size_t row, std::size_t col, double value, const DateForm& form);
  // A number where NumericText reads one with a decimal point.
  bool SetText(std::size_t row, std::size_t col, std::string_view text);
  // A date or a date and time in ISO form ("2026-11-21", "2026-11-21T06:38:34.5"), as the days since 30 December 1899;
  // anything else as a text.
  bool SetDate(std::size_t row, std::size_t col, std::string_view text);

  // The columns with dates and no other numbers have their patterns when all cells are set.
  void FindDatePatterns();

  GridCells Cells;

 private:
  struct ColumnForm {
    DateForm Dates;
    bool OtherNumbers = false;
  };
  bool Admit(std::size_t row, std::size_t col, std::size_t textSize);

  std::vector<std::size_t> heights_ = std::vector<std::size_t>(kMostSeriesColumns);
  std::vector<ColumnForm> forms_ = std::vector<ColumnForm>(kMostSeriesColumns);
  std::size_t taken_ = 0;
};

}  // namespace quorvex
