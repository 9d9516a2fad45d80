#include "import/ColumnAssignment.h"

#include <algorithm>
#include <cassert>
#include <numeric>
#include <utility>

#include "core/SolveData.h"
#include "import/DeviationColumn.h"
#include "sheet/ColumnNames.h"
#include "sheet/CopyCells.h"

namespace quorvex {

DataSheet SheetForColumns(const std::vector<std::string>& columns) {
  const bool deviation = DeviationColumn(columns) != 0;
  const std::size_t others = deviation ? 2 : 1, count = std::max(columns.size(), others + 1) - others;
  return {std::min<std::size_t>(count, kMostIndependentVariables), deviation};
}

void ColumnAssignment::SetColumns(std::size_t count, std::vector<std::string> names) {
  columnCount_ = count;
  names_ = std::move(names);
  std::replace_if(
      columns_.begin(), columns_.end(), [&](std::size_t column) { return column > count; }, 0);
}

std::string ColumnAssignment::NameOf(std::size_t column) const {
  return column >= 1 && column <= names_.size() ? names_[column - 1] : "";
}

std::vector<std::string> ColumnAssignment::lstColumns() const {
  std::vector<std::string> headings = names_;
  headings.resize(columnCount_);
  return ColumnNames(headings);
}

std::vector<std::string> ColumnAssignment::lstHeaders() const {
  const std::vector<std::string> columns = lstColumns();
  std::vector<std::string> lines = variables_;
  for (std::size_t v = 0; v < lines.size(); ++v)
    if (columns_[v] != 0) lines[v] += ": " + columns[columns_[v] - 1];
  return lines;
}

void ColumnAssignment::Assign(std::size_t column, std::size_t variable) {
  assert(column >= 1 && column <= columnCount_ && variable >= 1 && variable <= variables_.size());
  // A column goes to one variable only.
  std::replace(columns_.begin(), columns_.end(), column, std::size_t{0});
  columns_[variable - 1] = column;
}

void ColumnAssignment::UnAssign(std::size_t variable) { columns_[variable - 1] = 0; }

void ColumnAssignment::AssignInOrder() {
  const auto none = [](std::size_t column) { return column == 0; };
  // Only where the columns are as many as the variables and nothing was assigned: all else would be a guess.
  if (columnCount_ != columns_.size() || !std::all_of(columns_.begin(), columns_.end(), none)) return;
  std::iota(columns_.begin(), columns_.end(), std::size_t{1});
  if (const std::size_t deviation = hasDeviation_ ? DeviationColumn(lstColumns()) : 0; deviation != 0)
    std::rotate(columns_.begin() + static_cast<std::ptrdiff_t>(deviation) - 1,
                columns_.begin() + static_cast<std::ptrdiff_t>(deviation), columns_.end());
}

std::string ColumnAssignment::VariableOf(std::size_t column) const {
  const auto found = std::find(columns_.begin(), columns_.end(), column);
  return found == columns_.end() ? "" : variables_[static_cast<std::size_t>(found - columns_.begin())];
}

bool ColumnAssignment::MayBeImported(std::size_t column) const {
  return std::ranges::find(columns_, column) != columns_.end() ||
         std::ranges::all_of(columns_, [](std::size_t assigned) { return assigned == 0; });
}

bool ColumnAssignment::Confirm(const std::string& incomplete, Prompter& prompter) const {
  const auto missing = std::count(columns_.begin(), columns_.end(), 0);
  if (missing == static_cast<std::ptrdiff_t>(columns_.size())) {
    prompter.Refuse(
        "You did not assign data columns to any variables, so no data can be imported. To assign a data column in the "
        "file to a variable in the spreadsheet, select the data column and the corresponding variable from the two "
        "lists and click the Assign button. Repeat this procedure for each column in the data file you want to "
        "import.");
    return false;
  }
  return missing == 0 || prompter.Ask(incomplete);
}

void ColumnAssignment::MoveInto(GridCells& imported, std::size_t rows, DataSheet& sheet) const {
  GridCells kept;  // the rows to be imported, in the sheet's columns
  for (std::size_t v = 1; v <= columns_.size(); ++v)
    if (ColumnOf(v) != 0 && rows > 0) CopyCells(imported, {1, ColumnOf(v), rows, ColumnOf(v)}, kept, 1, v);
  // As far down as the sheet goes, lest old rows stay below the new ones.
  const std::size_t lastRow = std::max(rows, sheet.Cells.GridLastRow());
  for (std::size_t v = 1; v <= columns_.size(); ++v)
    if (ColumnOf(v) != 0 && lastRow > 0) CopyCells(kept, {1, v, lastRow, v}, sheet.Cells, 1, v);
}

}  // namespace quorvex
