#include "sheet/ScaleCells.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/NumberText.h"

namespace quorvex {
namespace {

constexpr struct {
  const char *Prompt, *Refusal;
  UndoOperation Operation;
} kTexts[] = {{"Enter the scaling factor:", "Please enter a valid scale factor.", UndoOperation::Scale},
              {"Enter the translation factor:", "Please enter a valid translation factor.", UndoOperation::Translate}};

const auto& TextsOf(FactorMode mode) { return kTexts[static_cast<std::size_t>(mode)]; }

}  // namespace

std::optional<CellRange> FactorRange(const SheetEdit& edit) {
  if (edit.Selection.size() == 1) return edit.Selection.front();
  edit.User.Refuse("Invalid range selection. Please select a range of cells to manipulate.");
  return std::nullopt;
}

std::string FactorPrompt(FactorMode mode) { return TextsOf(mode).Prompt; }

bool ApplyFactor(const SheetEdit& edit, const CellRange& range, FactorMode mode, const std::string& ScaleText) {
  const std::optional<double> factor = NumericText(ScaleText, edit.Locale.DecimalSeparator);
  if (!factor) {
    edit.User.Refuse(TextsOf(mode).Refusal);
    return false;
  }
  struct Change {
    std::size_t Row, Col;
    double Value;
  };
  GridCells& cells = edit.Sheet.Cells;
  // All values before the first change: an overflow refuses the command and leaves the sheet as it is.
  std::vector<Change> changes;
  const std::size_t lastRow = std::min(range.LastRow, cells.GridLastRow());
  const std::size_t lastCol = std::min(range.LastCol, cells.GridLastCol());
  for (std::size_t col = range.FirstCol; col <= lastCol; ++col) {
    for (std::size_t row = range.FirstRow; row <= lastRow; ++row) {
      const double cell = cells.Cell(row, col);
      if (std::isnan(cell)) continue;
      changes.push_back({row, col, mode == FactorMode::Scale ? cell * *factor : cell + *factor});
      if (!std::isfinite(changes.back().Value)) {
        edit.User.Refuse("A numerical error has ocurred.");
        return false;
      }
    }
  }
  edit.PushUndo(TextsOf(mode).Operation, range);
  for (const Change& change : changes) cells.SetGridCellNumber(change.Row, change.Col, change.Value);
  return true;
}

}  // namespace quorvex
