#include "sheet/ReplaceCells.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "core/NumberText.h"
#include "sheet/CellEntry.h"
#include "sheet/ColumnDates.h"
#include "sheet/IncomingCells.h"
#include "sheet/ParseDelimitedLines.h"

namespace quorvex {
namespace {

// A cell that is about to change: to a number or, without one, to a text, which empties the cell where it is empty.
struct NewCell {
  CellPlace Place;
  std::optional<double> Value;
  std::string Text;
  std::optional<DateForm> Date = {};  // of a value that was written as one
};

// What the cell becomes by that text; nothing for a number that would be none.
std::optional<NewCell> Become(const SheetEdit& edit, CellPlace place, const std::string& text) {
  if (const auto entry = ReadCellEntry(text, edit.Locale)) return NewCell{place, entry->Value, "", entry->Date};
  if (!GridCells::IsText(edit.Sheet.Cells.Cell(place.Row, place.Col))) return std::nullopt;
  return NewCell{place, std::nullopt, CutCellText(text)};
}

// The patterns of the columns without numbers that get dates and nothing else.
ColumnPatterns DatePatterns(const DataSheet& sheet, const std::vector<NewCell>& changes) {
  ColumnPatterns patterns;
  for (std::size_t col = 1; col <= sheet.ColumnCount(); ++col) {
    DateForm form;
    bool otherNumbers = !TakesDatePattern(sheet, col);
    for (const NewCell& change : changes) {
      if (change.Place.Col != col) continue;
      if (change.Date)
        form.Join(*change.Date);
      else
        otherNumbers |= change.Value.has_value();
    }
    if (const std::string pattern = form.Pattern(); !otherNumbers && !pattern.empty())
      patterns.emplace_back(col, pattern);
  }
  return patterns;
}

void Store(const SheetEdit& edit, const std::vector<NewCell>& changes) {
  CellRange extent{kMostSheetRows, kMostSheetRows, 1, 1};
  for (const NewCell& change : changes)
    extent = {std::min(extent.FirstRow, change.Place.Row), std::min(extent.FirstCol, change.Place.Col),
              std::max(extent.LastRow, change.Place.Row), std::max(extent.LastCol, change.Place.Col)};
  const ColumnPatterns patterns = DatePatterns(edit.Sheet, changes);
  edit.PushUndo(UndoLabel(UndoOperation::Replace).WithPatterns(!patterns.empty()), extent);
  SetPatterns(edit.Sheet, patterns);
  for (const auto& [place, value, text, date] : changes)
    value ? edit.Sheet.Cells.SetGridCellNumber(place.Row, place.Col, *value)
          : edit.Sheet.Cells.SetGridCellText(place.Row, place.Col, text);
}

std::string WouldBeNoNumber(const SheetEdit& edit, CellPlace place, const std::string& text) {
  return QuotedCell(text) + " in " + edit.Sheet.Headers[place.Col - 1] + ":" + std::to_string(place.Row) +
         " would be no number";
}

}  // namespace

std::optional<std::string> ReplaceCells::NewText(const SheetEdit& edit, CellPlace place) const {
  const double cell = edit.Sheet.Cells.Cell(place.Row, place.Col);
  if (GridCells::IsEmpty(cell) || Find.FindWhat.empty()) return std::nullopt;
  const std::string before = EntryText(edit.Sheet, place.Row, place.Col, edit.Locale);
  if (Find.MatchCells)
    return EqualNoCase(before, Find.FindWhat) || Find.Finds(edit.Sheet, place, edit.Locale) ? std::optional(ReplaceWith)
                                                                                            : std::nullopt;
  // In ASCII alone, as texts are found: places in the lower text are those in the text itself.
  const std::string lower = ToLower(before), what = ToLower(Find.FindWhat);
  std::string text;
  std::size_t from = 0;
  for (std::size_t at = lower.find(what); at != std::string::npos; at = lower.find(what, from)) {
    text.append(before, from, at - from).append(ReplaceWith);
    from = at + what.size();
  }
  return from > 0 ? std::optional(text.append(before, from)) : std::nullopt;
}

std::optional<CellPlace> ReplaceCells::ReplaceNext(const SheetEdit& edit, CellPlace active) const {
  const std::optional<std::string> text = NewText(edit, active);
  if (!text) return Find.FindNext(edit.Sheet, active, edit.Locale, edit.User);
  const std::optional<NewCell> change = Become(edit, active, *text);
  if (change)
    Store(edit, {*change});
  else
    edit.User.Refuse(WouldBeNoNumber(edit, active, *text) + ". It is left as it is.");
  return Find.Search(edit.Sheet, active, edit.Locale);
}

bool ReplaceCells::ReplaceAll(const SheetEdit& edit, bool inSelection) const {
  std::vector<CellRange> ranges{edit.WholeSheet()};
  if (inSelection) ranges = edit.Selection;
  std::vector<NewCell> changes;
  std::size_t left = 0;
  std::string why;
  for (const CellRange& range : ranges) {
    const std::size_t lastRow = std::min(range.LastRow, edit.Sheet.Cells.GridLastRow());
    const std::size_t lastCol = std::min(range.LastCol, edit.Sheet.ColumnCount());
    for (CellPlace place{range.FirstRow, 1}; place.Row <= lastRow; ++place.Row) {
      for (place.Col = range.FirstCol; place.Col <= lastCol; ++place.Col) {
        const std::optional<std::string> text = NewText(edit, place);
        if (!text) continue;
        if (auto change = Become(edit, place, *text))
          changes.push_back(std::move(*change));
        else if (++left == 1)
          why = WouldBeNoNumber(edit, place, *text);
      }
    }
  }
  if (changes.empty() && left == 0) {
    edit.User.Refuse(kNothingFound);
    return false;
  }
  if (!changes.empty()) Store(edit, changes);
  const auto cells = [](std::size_t count) {
    return std::to_string(count) + (count == 1 ? " cell was " : " cells were ");
  };
  edit.User.Inform(
      cells(changes.size()) + "replaced." +
      (left == 0 ? "" : " " + cells(left) + "left as " + (left == 1 ? "it is" : "they are") + ": " + why + "."));
  return !changes.empty();
}

}  // namespace quorvex
