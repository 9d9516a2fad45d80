#include "sheet/ComputedCells.h"

#include <array>
#include <cmath>
#include <limits>

#include "core/SolveData.h"
#include "equation/Evaluator.h"

namespace quorvex {

ComputedCells EvaluateRows(const Expression& expression, std::span<const std::vector<double>> x) {
  ComputedCells computed{std::vector<double>(x[0].size(), std::numeric_limits<double>::quiet_NaN())};
  Evaluator evaluator;
  std::array<double, kMostIndependentVariables> point{};
  const std::span<const double> variables = std::span<const double>(point).first(x.size());
  for (std::size_t row = 0; row < computed.Values.size(); ++row) {
    // Cells without a number are NaNs: their rows have no result, which is no fault.
    bool missing = false;
    for (std::size_t v = 0; v < x.size(); ++v) {
      point[v] = x[v][row];
      missing |= std::isnan(point[v]);
    }
    if (!missing && !evaluator.Evaluate(expression, variables, {}, {}, computed.Values[row])) computed.Faulted = true;
  }
  return computed;
}

std::vector<double> CopyColumn(const GridCells& cells, std::size_t col, std::size_t firstRow, std::size_t lastRow) {
  std::vector<double> column;
  for (std::size_t row = firstRow; row <= lastRow; ++row) column.push_back(cells.Cell(row, col));
  return column;
}

void StoreComputedCells(const SheetEdit& edit, const UndoLabel& label, const CellRange& target,
                        const ComputedCells& computed) {
  edit.PushUndo(label, target);
  for (std::size_t i = 0; i < computed.Values.size(); ++i) {
    const std::size_t row = target.FirstRow + i;
    if (std::isnan(computed.Values[i]))
      edit.Sheet.Cells.ClearCell(row, target.FirstCol);
    else
      edit.Sheet.Cells.SetGridCellNumber(row, target.FirstCol, computed.Values[i]);
  }
  if (computed.Faulted)
    edit.User.Inform("Cells whose corresponding numerical evaluations resulted in errors were left blank.");
}

}  // namespace quorvex
