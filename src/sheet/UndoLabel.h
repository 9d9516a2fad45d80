#pragma once

#include <string>
#include <string_view>

namespace quorvex {

// What a snapshot of the undo stack holds, which its operation decides.
enum class UndoExtent {
  Formats,          // the formats of all columns
  Headers,          // the headers of all columns
  HeadersAndCells,  // those and the range
  Cells,            // the range, put back in place
  DeletedRows,      // the rows of the range, put back by insertion
  InsertedRows,     // where rows were inserted, and how many
  WholeSheet,       // every cell
  Import,           // every cell, the headers and the number patterns of all columns
  Columns,          // the whole sheet with its columns, and the models, which are made for those
  Models            // no cells, the solved models and interpolations alone
};

// The operations that can be taken back.
enum class UndoOperation {
  FormatCells,
  Import,
  EditHeader,
  DefaultHeaders,
  ExchangeHeaders,
  Typing,
  Sweep,
  ClearSelection,
  Sort,
  Cut,
  Exchange,
  Scale,
  Translate,
  Combine,
  Paste,
  PasteSpecial,
  PasteRotated,
  DeleteSelection,
  InsertRows,
  ClearSheet,
  DeleteIncompleteRows,
  ZeroNegativeData,
  ZeroPositiveData,
  AverageReplicates,
  Smooth,
  SolveAll,
  SolveLast,
  SolveGroup,
  Solve,
  ClearFits,
  ModifyParameters,
  ChangeColumns,
  Replace,
  ReportQuantities
};

UndoExtent ExtentOf(UndoOperation operation);

// What every label begins with.
inline constexpr std::string_view kUndoVerb = "&Undo";

// An operation with the text that the menu shows for it, such as "&Undo Sort".
struct UndoLabel {
  UndoOperation Operation;
  std::string Text;
  bool HasPatterns = false;  // the number patterns of columns change, too

  // `detail` stands behind what all operations of that kind are called, as in "&Undo Typing "1" in X:1".
  UndoLabel(UndoOperation operation, std::string_view detail = {});
  // The label of an operation that changes number patterns, or doesn't.
  UndoLabel WithPatterns(bool changed) const;

  bool operator==(const UndoLabel&) const = default;
};

// A label that names a model by its first 15 characters, such as "&Undo Modify Parameters 'a*x+b...'".
UndoLabel UndoLabelOfModel(UndoOperation operation, std::string_view modelName);

}  // namespace quorvex
