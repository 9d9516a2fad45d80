#include "sheet/UndoLabel.h"

#include <cstddef>

#include "core/NumberText.h"

namespace quorvex {
namespace {

struct Row {
  UndoOperation Operation;
  std::string_view Name;  // as it follows the verb in the menu
  UndoExtent Extent;
};

constexpr Row kRows[] = {
    {UndoOperation::FormatCells, "Format Cells", UndoExtent::Formats},
    {UndoOperation::Import, "Import", UndoExtent::Import},
    {UndoOperation::EditHeader, "Edit Header", UndoExtent::Headers},
    {UndoOperation::DefaultHeaders, "Default Headers", UndoExtent::Headers},
    {UndoOperation::ExchangeHeaders, "Exchange Headers", UndoExtent::HeadersAndCells},
    {UndoOperation::Typing, "Typing", UndoExtent::Cells},
    {UndoOperation::Sweep, "Sweep", UndoExtent::Cells},
    {UndoOperation::ClearSelection, "Clear Selection", UndoExtent::Cells},
    {UndoOperation::Sort, "Sort", UndoExtent::Cells},
    {UndoOperation::Cut, "Cut", UndoExtent::Cells},
    {UndoOperation::Exchange, "Exchange", UndoExtent::Cells},
    {UndoOperation::Scale, "Scale", UndoExtent::Cells},
    {UndoOperation::Translate, "Translate", UndoExtent::Cells},
    {UndoOperation::Combine, "Combine", UndoExtent::Cells},
    {UndoOperation::Paste, "Paste", UndoExtent::HeadersAndCells},
    {UndoOperation::PasteSpecial, "Paste Special", UndoExtent::HeadersAndCells},
    {UndoOperation::PasteRotated, "Paste Rotated", UndoExtent::HeadersAndCells},
    {UndoOperation::DeleteSelection, "Delete Selection", UndoExtent::DeletedRows},
    {UndoOperation::InsertRows, "Insert Row(s)", UndoExtent::InsertedRows},
    {UndoOperation::ClearSheet, "Clear Sheet", UndoExtent::WholeSheet},
    {UndoOperation::DeleteIncompleteRows, "Delete Incomplete Rows", UndoExtent::WholeSheet},
    {UndoOperation::ZeroNegativeData, "Zero Negative Data", UndoExtent::WholeSheet},
    {UndoOperation::ZeroPositiveData, "Zero Positive Data", UndoExtent::WholeSheet},
    {UndoOperation::AverageReplicates, "Average Replicates", UndoExtent::WholeSheet},
    {UndoOperation::Smooth, "Smooth", UndoExtent::WholeSheet},
    {UndoOperation::SolveAll, "Solve All", UndoExtent::Models},
    {UndoOperation::SolveLast, "Solve Last", UndoExtent::Models},
    {UndoOperation::SolveGroup, "Solve Group", UndoExtent::Models},
    {UndoOperation::Solve, "Solve", UndoExtent::Models},
    {UndoOperation::ClearFits, "Clear Fits", UndoExtent::Models},
    {UndoOperation::ModifyParameters, "Modify Parameters", UndoExtent::Models},
    {UndoOperation::ChangeColumns, "Change Columns", UndoExtent::Columns},
    {UndoOperation::Replace, "Replace", UndoExtent::Cells},
    {UndoOperation::ReportQuantities, "Report Quantities", UndoExtent::Models},
};

constexpr const Row& RowOf(UndoOperation operation) { return kRows[static_cast<std::size_t>(operation)]; }

constexpr bool InOrder() {
  for (const Row& row : kRows)
    if (&row != &RowOf(row.Operation)) return false;
  return true;
}
static_assert(InOrder(), "a row stands at the place of its operation");

}  // namespace

UndoExtent ExtentOf(UndoOperation operation) { return RowOf(operation).Extent; }

UndoLabel::UndoLabel(UndoOperation operation, std::string_view detail) : Operation(operation) {
  const std::string_view name = RowOf(operation).Name;
  Text.reserve(kUndoVerb.size() + 1 + name.size() + 1 + detail.size());
  Text.append(kUndoVerb).append(" ").append(name);
  if (!detail.empty()) Text.append(" ").append(detail);
}

UndoLabel UndoLabel::WithPatterns(bool changed) const {
  UndoLabel label = *this;
  label.HasPatterns = changed;
  return label;
}

UndoLabel UndoLabelOfModel(UndoOperation operation, std::string_view modelName) {
  constexpr std::size_t kShown = 15;
  return {operation, "'" + FirstCharacters(modelName, kShown) + "...'"};
}

}  // namespace quorvex
