#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "core/Prompter.h"
#include "sheet/ColumnNames.h"
#include "sheet/DataSheet.h"
#include "sheet/GridCells.h"

namespace quorvex {

// An empty sheet of the kind to propose for a file with columns of these names: the last one is Y, but for one that is
// named as its standard deviation.
DataSheet SheetForColumns(const std::vector<std::string>& columns);

// Which column of imported data goes to which variable of the sheet: the two lists of an import dialog. Columns and
// variables count from 1. An assignment pairs one with one.
class ColumnAssignment {
 public:
  // Of the sheet's columns, by the texts of their headers. Nothing is assigned.
  explicit ColumnAssignment(const DataSheet& sheet)
      : variables_(ColumnNames(sheet.Headers)),
        columns_(sheet.Headers.size()),
        hasDeviation_(sheet.HasStandardDeviation) {}

  // How many columns the data has, and the names of those that have one. Variables that had a column behind the last
  // are without one again.
  void SetColumns(std::size_t count, std::vector<std::string> names = {});

  // Other names for the same columns.
  void NameColumns(std::vector<std::string> names) { names_ = std::move(names); }

  std::vector<std::string> lstColumns() const;   // "Column 1", or its name
  std::vector<std::string> lstHeaders() const;   // "X", or "X: Column 3"
  std::string NameOf(std::size_t column) const;  // "" for none

  // A column that another variable had is taken from that.
  void Assign(std::size_t column, std::size_t variable);
  void UnAssign(std::size_t variable);
  // Where nothing is assigned and there are as many columns as variables: each column to the variable in its place, but
  // one that is named so to the standard deviation.
  void AssignInOrder();
  std::size_t ColumnOf(std::size_t variable) const { return columns_[variable - 1]; }  // 0 for none
  std::string VariableOf(std::size_t column) const;                                    // "" for none
  // Whether the column goes to a variable, or may yet, since none does.
  bool MayBeImported(std::size_t column) const;

  // Whether to go on: refused where nothing is assigned, and asked by `incomplete` where some variable is left out.
  bool Confirm(const std::string& incomplete, Prompter& prompter) const;

  // Gives the sheet's assigned columns the imported rows; cells below those are emptied, and columns without an
  // assignment stay as they are.
  void MoveInto(GridCells& imported, std::size_t rows, DataSheet& sheet) const;

 private:
  std::vector<std::string> variables_;
  std::vector<std::size_t> columns_;  // by variable
  bool hasDeviation_;                 // the last variable is one
  std::size_t columnCount_ = 0;
  std::vector<std::string> names_;  // of the columns
};

}  // namespace quorvex
