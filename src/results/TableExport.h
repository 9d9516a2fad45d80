#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Prompter.h"
#include "core/Result.h"
#include "results/ExportTable.h"
#include "results/FitLimits.h"
#include "sheet/DataSheet.h"
#include "solve/GatherData.h"
#include "solve/SolvedList.h"

namespace quorvex {

// What the rows of an exported table are.
enum class TableType {
  ValueOfY,  // a grid of X's, and the Y of each equation there
  XValues,   // the points of the data, and for each equation its Y and what that leaves over
  RootAtY    // a grid of Y and the other X's, and the X at which each equation has that Y
};

struct TableChoice {
  TableType Type = TableType::ValueOfY;
  int Variable = 1;          // whose roots are searched, from 1
  LimitsChoice Limits = {};  // besides each Y
};

// A variable that a table runs over: its name, and the range as it is typed, numbers in the locale's form.
struct TableVariable {
  std::string Name, InitialValue, FinalValue, NPoints;
};

// The same as numbers.
struct TableAxis {
  std::string Name;
  double Initial = 0, Final = 0;
  std::size_t Points = 1;
  // Value number i from 0, the last one being Final where there are several.
  double Value(std::size_t i) const;
};

// The most rows that a table over ranges may have.
inline constexpr std::size_t kMostTableRows = 65'535;

// Equations of the solved list whose values go to a table. It looks into the project that holds them, which is not to
// change meanwhile; the table that it makes has copies.
class TableExport {
 public:
  // Nothing, and the user is told why, where none or too many are selected or the sheet cannot be read.
  static std::optional<TableExport> Begin(const std::vector<SolvedItem>& solved,
                                          const std::vector<SolvedItem>& selected, const DataSheet& sheet,
                                          const LocaleText& locale, Prompter& user);

  int Variables() const { return equations_.front().NumIndependentVar(); }
  // The variables, with the names of their columns.
  const std::vector<std::string>& VariableNames() const { return variableNames_; }
  // What the types are called, in their order.
  std::vector<std::string> TypeNames() const;

  // What a table of that kind runs over, with the range of the input to begin with; none for the points of the data.
  std::vector<TableVariable> Ranges(const TableChoice& choice) const;
  // The failure names the first entry that does not do, row by row, or the number of points where that is too large.
  Result<std::vector<TableAxis>> ReadRanges(const std::vector<TableVariable>& typed) const;

  // Computes the table, for which the user waits. Nothing where they cancel, or after they are told that it cannot be
  // had.
  std::optional<ExportTable> Make(const TableChoice& choice, const std::vector<TableAxis>& axes, Prompter& user) const;

 private:
  TableExport() = default;

  std::vector<SolvedItem> equations_;
  SolveData data_;
  std::vector<std::string> variableNames_;
  LocaleText locale_;
};

}  // namespace quorvex
