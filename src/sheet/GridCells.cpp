#include "sheet/GridCells.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <iterator>
#include <utility>

#include "core/LargePages.h"
#include "core/NumberText.h"

namespace quorvex {

double GridCells::Cell(std::size_t row, std::size_t col) const {
  assert(row > 0 && col > 0);
  if (col > columns_.size() || row > columns_[col - 1].size()) return std::bit_cast<double>(kEmptyBits);
  return columns_[col - 1][row - 1];
}

void GridCells::SetCell(std::size_t row, std::size_t col, double cell) {
  assert(row > 0 && col > 0);
  if (col > columns_.size()) columns_.resize(col);
  std::vector<double>& column = columns_[col - 1];
  if (row <= column.size()) {
    column[row - 1] = cell;
    return DropEmptyEnd(column);
  }
  if (IsEmpty(cell)) return;
  // push_back at last: unlike resize it grows in steps, so that filling a column row by row stays linear.
  while (column.size() + 1 < row) column.push_back(std::bit_cast<double>(kEmptyBits));
  column.push_back(cell);
}

void GridCells::DropEmptyEnd(std::vector<double>& column) {
  // No column ends with an empty cell: the last row of the sheet, which the view asks for all the time, needs no
  // search.
  while (!column.empty() && IsEmpty(column.back())) column.pop_back();
}

void GridCells::DropLostTexts() {
  if (texts_.empty()) return;
  std::vector<std::string> kept;
  for (auto& column : columns_) {
    for (double& cell : column) {
      if (!IsText(cell)) continue;
      kept.push_back(std::move(texts_[std::bit_cast<std::uint64_t>(cell) - kTextBits]));
      cell = std::bit_cast<double>(kTextBits + (kept.size() - 1));
    }
  }
  texts_ = std::move(kept);
}

std::size_t GridCells::GridLastRow() const {
  std::size_t last = 0;
  for (const auto& column : columns_) last = std::max(last, column.size());
  return last;
}

std::size_t GridCells::GridLastCol() const {
  std::size_t col = columns_.size();
  while (col > 0 && columns_[col - 1].empty()) --col;
  return col;
}

std::string GridCells::GridCellText(std::size_t row, std::size_t col) const {
  const double cell = Cell(row, col);
  if (IsEmpty(cell)) return "";
  return IsText(cell) ? TextBehind(cell) : GeneralNumber(cell);
}

double GridCells::GridCellNumber(std::size_t row, std::size_t col) const {
  const double cell = Cell(row, col);
  return std::isnan(cell) ? 0 : cell;
}

void GridCells::SetGridCellText(std::size_t row, std::size_t col, std::string_view text) {
  if (Trim(text).empty()) return ClearCell(row, col);
  const double cell = Cell(row, col);
  if (IsText(cell)) {  // its place in the list is free again
    texts_[std::bit_cast<std::uint64_t>(cell) - kTextBits] = text;
    return;
  }
  // Only when the list has doubled, so that looking for lost texts costs no more than adding them.
  if (texts_.size() >= textsToLookAt_) {
    DropLostTexts();
    textsToLookAt_ = std::max(textsToLookAt_, 2 * texts_.size());
  }
  texts_.emplace_back(text);
  SetCell(row, col, std::bit_cast<double>(kTextBits + (texts_.size() - 1)));
}

void GridCells::SetNumber(std::size_t row, std::size_t col, double value) {
  // In a column NaNs stand for texts and empty cells, so what is not finite is kept as a text.
  if (!std::isfinite(value)) return SetGridCellText(row, col, GeneralNumber(value));
  SetCell(row, col, value);
}

void GridCells::AppendNumbers(std::size_t row, std::size_t col, std::span<const double> numbers) {
  if (numbers.empty()) return;
  if (col > columns_.size()) columns_.resize(col);
  std::vector<double>& column = columns_[col - 1];
  column.resize(row - 1, std::bit_cast<double>(kEmptyBits));
  column.insert(column.end(), numbers.begin(), numbers.end());
}

void GridCells::ClearCell(std::size_t row, std::size_t col) {
  if (!IsEmpty(Cell(row, col))) SetCell(row, col, std::bit_cast<double>(kEmptyBits));
}

void GridCells::Reserve(std::size_t rows) {
  for (auto& column : columns_) ReserveLarge(column, rows);
}

void GridCells::MoveColumns(std::span<const std::size_t> targets) {
  std::vector<std::vector<double>> arranged;
  std::vector<std::string> names;
  for (std::size_t p = 0; p < targets.size(); ++p) {
    const std::size_t target = targets[p];
    if (target == 0) continue;
    if (target > arranged.size()) arranged.resize(target), names.resize(target);
    arranged[target - 1] = p < columns_.size() ? std::move(columns_[p]) : std::vector<double>();
    names[target - 1] = ColumnName(p + 1);
  }
  columns_ = std::move(arranged);
  if (!ColumnNames.empty()) ColumnNames = std::move(names);
}

void GridCells::GridClearRange(const CellRange& range) {
  for (std::size_t col = range.FirstCol; col <= std::min(range.LastCol, columns_.size()); ++col) {
    std::vector<double>& column = columns_[col - 1];
    for (std::size_t row = range.FirstRow; row <= std::min(range.LastRow, column.size()); ++row)
      column[row - 1] = std::bit_cast<double>(kEmptyBits);
    DropEmptyEnd(column);
  }
  DropLostTexts();
}

void GridCells::GridInsertRows(std::size_t row, std::size_t count) {
  for (auto& column : columns_)
    if (row <= column.size())
      column.insert(column.begin() + static_cast<std::ptrdiff_t>(row - 1), count, std::bit_cast<double>(kEmptyBits));
}

void GridCells::GridDeleteRows(std::size_t row, std::size_t count) {
  for (auto& column : columns_) {
    if (row > column.size()) continue;
    const auto first = column.begin() + static_cast<std::ptrdiff_t>(row - 1);
    column.erase(first, first + static_cast<std::ptrdiff_t>(std::min(count, column.size() - (row - 1))));
    DropEmptyEnd(column);
  }
  DropLostTexts();
}

void GridCells::DeleteMarkedRows(const std::vector<bool>& marked) {
  for (auto& column : columns_) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < column.size(); ++i)
      if (i >= marked.size() || !marked[i]) column[kept++] = column[i];
    column.resize(kept);
    DropEmptyEnd(column);
  }
  DropLostTexts();
}

GridCells GridCells::CopyRange(const CellRange& range) const {
  GridCells copy;
  for (std::size_t col = range.FirstCol; col <= std::min(range.LastCol, columns_.size()); ++col) {
    const std::vector<double>& column = columns_[col - 1];
    const std::size_t first = std::min(range.FirstRow - 1, column.size());
    const std::size_t last = std::min(range.LastRow, column.size());
    auto& target = copy.columns_.emplace_back(column.begin() + static_cast<std::ptrdiff_t>(first),
                                              column.begin() + static_cast<std::ptrdiff_t>(std::max(first, last)));
    DropEmptyEnd(target);
    for (double& cell : target) {
      if (!IsText(cell)) continue;
      copy.texts_.push_back(TextBehind(cell));
      cell = std::bit_cast<double>(kTextBits + (copy.texts_.size() - 1));
    }
  }
  return copy;
}

void GridCells::AppendBelow(std::size_t rows, GridCells part) {
  columns_.resize(std::max(columns_.size(), part.columns_.size()));
  for (std::size_t col = 0; col < part.columns_.size(); ++col) {
    std::vector<double>& from = part.columns_[col];
    if (from.empty()) continue;
    if (part.HasTexts())
      for (double& cell : from)
        if (IsText(cell)) cell = std::bit_cast<double>(std::bit_cast<std::uint64_t>(cell) + texts_.size());
    columns_[col].resize(rows, std::bit_cast<double>(kEmptyBits));
    columns_[col].insert(columns_[col].end(), from.begin(), from.end());
  }
  std::ranges::move(part.texts_, std::back_inserter(texts_));
}

void GridCells::PutRange(const CellRange& range, const GridCells& copy) {
  GridClearRange(range);
  for (std::size_t col = 1; col <= std::min(range.Cols(), copy.columns_.size()); ++col) {
    const std::vector<double>& column = copy.columns_[col - 1];
    for (std::size_t row = 1; row <= std::min(range.Rows(), column.size()); ++row) {
      const double cell = column[row - 1];
      if (IsEmpty(cell)) continue;
      if (IsText(cell)) {
        SetGridCellText(range.FirstRow + row - 1, range.FirstCol + col - 1, copy.TextBehind(cell));
      } else {
        SetCell(range.FirstRow + row - 1, range.FirstCol + col - 1, cell);
      }
    }
  }
}

void GridCells::ExchangeColumns(std::size_t a, std::size_t b, std::size_t firstRow, std::size_t lastRow) {
  lastRow = std::min(lastRow, GridLastRow());
  for (std::size_t row = firstRow; row <= lastRow; ++row) {
    const double cell = Cell(row, a);
    SetCell(row, a, Cell(row, b));
    SetCell(row, b, cell);
  }
}

std::vector<double> GridCells::TakeColumn(std::size_t col, std::size_t rows) {
  std::vector<double> column;
  if (col <= columns_.size()) column = std::exchange(columns_[col - 1], {});
  column.resize(rows, std::bit_cast<double>(kEmptyBits));
  return column;
}

const std::string& GridCells::TextBehind(double cell) const {
  return texts_[std::bit_cast<std::uint64_t>(cell) - kTextBits];
}

}  // namespace quorvex
