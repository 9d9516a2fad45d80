#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "RecordingPrompter.h"
#include "core/NumberText.h"
#include "sheet/SheetEdit.h"

namespace quorvex {

// What commands left to undo: their labels, and the cells that they change.
using Snapshots = std::vector<std::pair<std::string, CellRange>>;

// A sheet for a command to change, and what the command says and remembers.
struct EditedSheet {
  DataSheet Sheet;
  LocaleText Locale;
  RecordingPrompter User;
  Snapshots Undo;
  std::string WhenRemembered;  // the cells at the last push

  // One line per row with a blank between cells, "-" for an empty one; what is not numeric is a text.
  explicit EditedSheet(std::string_view cells, std::size_t independentVariables = 1, bool hasStandardDeviation = false)
      : Sheet(independentVariables, hasStandardDeviation) {
    for (std::size_t row = 1; !cells.empty(); ++row) {
      std::string_view line = TakeLine(cells);
      for (std::size_t col = 1; !line.empty(); ++col) {
        const std::size_t end = std::min(line.find(' '), line.size());
        const std::string_view cell = line.substr(0, end);
        if (const auto value = NumericText(cell))
          Sheet.Cells.SetGridCellNumber(row, col, *value);
        else if (cell != "-")
          Sheet.Cells.SetGridCellText(row, col, cell);
        line.remove_prefix(std::min(end + 1, line.size()));
      }
    }
    given_ = Cells();
  }

  SheetEdit With(std::vector<CellRange> selection) {
    return {Sheet, Locale, User, std::move(selection), [this](const UndoLabel& label, const CellRange& extent) {
              Undo.emplace_back(label.Text, extent);
              WhenRemembered = Cells();
            }};
  }
  SheetEdit WithAll() { return With({{1, 1, kMostSheetRows, Sheet.ColumnCount()}}); }

  // No command has changed a cell or left a snapshot.
  bool Untouched() const { return Undo.empty() && Cells() == given_; }

  // The sheet in the form it was given in.
  std::string Cells() const {
    std::string text;
    for (std::size_t row = 1; row <= Sheet.Cells.GridLastRow(); ++row) {
      for (std::size_t col = 1; col <= Sheet.ColumnCount(); ++col) {
        const std::string cell = Sheet.Cells.GridCellText(row, col);
        text += (col > 1 ? " " : "") + (cell.empty() ? "-" : cell);
      }
      text += '\n';
    }
    return text;
  }

 private:
  std::string given_;
};

}  // namespace quorvex
