#include "sheet/GridCells.h"

#include <algorithm>
#include <cassert>
#include <cmath>
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
    return;
  }
  // push_back at last: unlike resize it grows in steps, so that filling a column row by row stays linear.
  while (column.size() + 1 < row) column.push_back(std::bit_cast<double>(kEmptyBits));
  column.push_back(cell);
}

std::size_t GridCells::GridLastRow() const {
  std::size_t last = 0;
  for (const auto& column : columns_) {
    std::size_t row = column.size();
    while (row > last && IsEmpty(column[row - 1])) --row;
    last = std::max(last, row);
  }
  return last;
}

std::size_t GridCells::GridLastCol() const {
  std::size_t col = columns_.size();
  while (col > 0 && std::all_of(columns_[col - 1].begin(), columns_[col - 1].end(), IsEmpty)) --col;
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
  texts_.emplace_back(text);
  SetCell(row, col, std::bit_cast<double>(kTextBits + (texts_.size() - 1)));
}

void GridCells::SetNumber(std::size_t row, std::size_t col, double value) {
  if (!std::isfinite(value)) return SetGridCellText(row, col, GeneralNumber(value));
  SetCell(row, col, value);
}

void GridCells::ClearCell(std::size_t row, std::size_t col) {
  if (!IsEmpty(Cell(row, col))) SetCell(row, col, std::bit_cast<double>(kEmptyBits));
}

void GridCells::Reserve(std::size_t rows) {
  for (auto& column : columns_) {
    column.reserve(rows);
    PreferLargePages(column);
  }
}

void GridCells::MoveColumns(std::span<const std::size_t> targets) {
  std::vector<std::vector<double>> arranged;
  for (std::size_t p = 0; p < targets.size(); ++p) {
    const std::size_t target = targets[p];
    if (target == 0) continue;
    if (target > arranged.size()) arranged.resize(target);
    arranged[target - 1] = p < columns_.size() ? std::move(columns_[p]) : std::vector<double>();
  }
  columns_ = std::move(arranged);
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
