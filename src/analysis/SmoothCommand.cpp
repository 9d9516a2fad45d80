#include "analysis/SmoothCommand.h"

#include <algorithm>

#include "analysis/LowessSmooth.h"
#include "core/NumberText.h"
#include "sheet/EditCommands.h"
#include "sheet/IncompleteRows.h"

namespace quorvex {

std::size_t SmoothCommand::CompleteRows() const {
  const GridCells& cells = edit_.Sheet.Cells;
  std::size_t complete = 0;
  for (std::size_t row = 1; row <= cells.GridLastRow(); ++row)
    if (!GridCells::IsEmpty(cells.Cell(row, 1)) && !GridCells::IsEmpty(cells.Cell(row, 2))) ++complete;
  return complete;
}

bool SmoothCommand::Begin() {
  constexpr std::size_t kFewestPoints = 4;
  if (edit_.Sheet.IndependentVariables != 1) {
    edit_.User.Refuse("Only a project with one independent variable can be smoothed.");
    return false;
  }
  if (CompleteRows() < kFewestPoints) {
    edit_.User.Refuse("You need at least 4 data points in order to smooth the data.");
    return false;
  }
  const std::vector<bool> incomplete = IncompleteRows(edit_.Sheet);
  if (std::find(incomplete.begin(), incomplete.end(), true) != incomplete.end()) {
    if (!edit_.User.Ask("The spreadsheet contains incomplete rows which must be removed before smoothing. Do you want "
                        "to delete the incomplete rows now?"))
      return false;
    changed_ = DeleteIncompleteRows(edit_);
  }
  if (TakePoints()) return true;
  edit_.User.Refuse("An error has occurred obtaining the input data.");
  return false;
}

// False where a cell holds a text.
bool SmoothCommand::TakePoints() {
  const GridCells& cells = edit_.Sheet.Cells;
  for (std::size_t row = 1; row <= cells.GridLastRow(); ++row) {
    const double x = cells.Cell(row, 1), y = cells.Cell(row, 2);
    if (GridCells::IsText(x) || GridCells::IsText(y)) return false;
    if (!GridCells::IsEmpty(x)) rows_.push_back(row);
  }
  std::stable_sort(rows_.begin(), rows_.end(),
                   [&](std::size_t a, std::size_t b) { return cells.Cell(a, 1) < cells.Cell(b, 1); });
  for (const std::size_t row : rows_) {
    x_.push_back(cells.Cell(row, 1));
    y_.push_back(cells.Cell(row, 2));
  }
  return true;
}

bool SmoothCommand::Apply(std::string& percent) {
  const char separator = edit_.Locale.DecimalSeparator;
  if (!NumericText(percent, separator)) percent = kDefaultPercent;
  const double typed = *NumericText(percent, separator), f = typed / 100;
  if (f >= 1 || f <= 0) {
    edit_.User.Refuse(f >= 1 ? "The smoothing window must be less than 100%."
                             : "The smoothing window must be greater than 0%.");
    return false;
  }
  // Copies, since a smooth that is cancelled may go on for a moment.
  const auto smoothed = Await<std::optional<Smoothed>>(
      &edit_.User, "Smoothing the data",
      [x = x_, y = y_, f](const LongWork& work) { return LowessSmooth(x, y, f, kLowessSteps, LowessDelta(x), work); });
  if (!smoothed) return false;
  if (!*smoothed) {
    edit_.User.Refuse("Error in Lowess procedure, the task could not be completed.");
    return false;
  }
  smooth_ = (*smoothed)->ys;
  applied_ = typed;
  return true;
}

bool SmoothCommand::Finish(std::string& percent) {
  const bool current = applied_ && NumericText(percent, edit_.Locale.DecimalSeparator) == applied_;
  if (!current && !Apply(percent)) return false;
  edit_.PushUndo(UndoOperation::Smooth, edit_.WholeSheet());
  for (std::size_t i = 0; i < rows_.size(); ++i) edit_.Sheet.Cells.SetGridCellNumber(rows_[i], 2, smooth_[i]);
  changed_ = true;
  return true;
}

}  // namespace quorvex
