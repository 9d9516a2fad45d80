#pragma once

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sheet/CellRange.h"

namespace quorvex {

// The cells of a grid, column by column. A cell is empty, a number or a text. Rows and columns are counted from 1, as
// users count them, and there is no limit on either; a cell that was never set is empty.
//
// A column is an array of doubles, 8 bytes a cell. What is not a number is a NaN with a mark in its payload: one for
// empty cells, and one for texts with the text's place in a list beside the columns. So a column of numbers can be
// taken out and solved as it is, and marks move with their rows.
class GridCells {
 public:
  // The line of the file that row 1 came from, counted from 1.
  std::size_t FirstLine = 1;
  // What the source calls its columns, in their order; empty where it has no names for them.
  std::vector<std::string> ColumnNames;
  std::string ColumnName(std::size_t col) const { return col <= ColumnNames.size() ? ColumnNames[col - 1] : ""; }

  // The date pattern of each column whose numbers are all dates in the source, "" for the others; those behind the last
  // have none.
  std::vector<std::string> DatePatterns;
  std::string DatePattern(std::size_t col) const { return col <= DatePatterns.size() ? DatePatterns[col - 1] : ""; }

  std::size_t GridLastRow() const;  // highest row that holds anything, 0 for an empty grid
  std::size_t GridLastCol() const;  // highest column that holds anything

  // A number as GeneralNumber writes it, a text as it is; empty for an empty cell.
  std::string GridCellText(std::size_t row, std::size_t col) const;
  // The value of a number, 0 for anything else.
  double GridCellNumber(std::size_t row, std::size_t col) const;

  // A cell as it is stored: its number, or a NaN by which IsEmpty or IsText holds. SetCell takes cells of the same
  // grid; one that holds a text may be moved but not doubled, since both would share the text.
  double Cell(std::size_t row, std::size_t col) const;
  void SetCell(std::size_t row, std::size_t col, double cell);

  // Stores a text as a text, number or not; one of blanks alone empties the cell.
  void SetGridCellText(std::size_t row, std::size_t col, std::string_view text);
  // A value that is not finite is stored as the text of it. The row behind a column's last comes at the price of a
  // push_back, since readers fill columns so.
  void SetGridCellNumber(std::size_t row, std::size_t col, double value) {
    if (col <= columns_.size() && columns_[col - 1].size() + 1 == row && std::isfinite(value)) {
      columns_[col - 1].push_back(value);
    } else {
      SetNumber(row, col, value);
    }
  }
  // Puts finite numbers below a column, from `row` on, which none of its cells reaches.
  void AppendNumbers(std::size_t row, std::size_t col, std::span<const double> numbers);
  void ClearCell(std::size_t row, std::size_t col);

  // Makes room for `rows` rows in the columns there are.
  void Reserve(std::size_t rows);

  // Column p goes with its name to column targets[p - 1], and nowhere where that is 0 or missing; what was not moved to
  // is empty after that. Of two columns with one target the later stays.
  void MoveColumns(std::span<const std::size_t> targets);

  void GridClearRange(const CellRange& range);
  // Puts `count` empty rows above `row`.
  void GridInsertRows(std::size_t row, std::size_t count);
  void GridDeleteRows(std::size_t row, std::size_t count);
  // Deletes each row whose flag is set, the first flag being that of row 1.
  void DeleteMarkedRows(const std::vector<bool>& marked);
  // The cells of a range, its top left corner in row 1 and column 1.
  GridCells CopyRange(const CellRange& range) const;
  // Puts the cells of another grid below the first `rows` rows, which are all there are.
  void AppendBelow(std::size_t rows, GridCells part);
  // Gives a range the cells of such a copy, the empty ones too.
  void PutRange(const CellRange& range, const GridCells& copy);
  // Exchanges the cells of two columns from `firstRow` to `lastRow`.
  void ExchangeColumns(std::size_t a, std::size_t b, std::size_t firstRow, std::size_t lastRow);

  // Takes a column out of the grid as it stands, marks included, cut or filled up with empty cells to `rows` rows. The
  // texts behind its cells are there until the grid is changed.
  std::vector<double> TakeColumn(std::size_t col, std::size_t rows);

  static bool IsEmpty(double cell) { return std::bit_cast<std::uint64_t>(cell) == kEmptyBits; }
  static bool IsText(double cell) { return std::bit_cast<std::uint64_t>(cell) >= kTextBits; }
  // Whether any cell may be a text.
  bool HasTexts() const { return !texts_.empty(); }
  // The text behind a cell for which IsText holds.
  const std::string& TextBehind(double cell) const;

 private:
  // Quiet NaNs that no arithmetic gives. Texts have the sign bit and their place in the low bits, above all numbers.
  static constexpr std::uint64_t kEmptyBits = 0x7FF8'0000'0000'0E00;
  static constexpr std::uint64_t kTextBits = 0xFFF8'0000'0000'0001;

  void SetNumber(std::size_t row, std::size_t col, double value);
  static void DropEmptyEnd(std::vector<double>& column);
  // Gives back the texts that no cell holds any more.
  void DropLostTexts();

  std::vector<std::vector<double>> columns_;  // none ends with an empty cell, so the last row is known at once
  std::vector<std::string> texts_;
  std::size_t textsToLookAt_ = 1024;  // how many there may be before the lost ones among them are looked for
};

}  // namespace quorvex
