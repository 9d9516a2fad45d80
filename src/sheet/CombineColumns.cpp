#include "sheet/CombineColumns.h"

#include <array>
#include <utility>

namespace quorvex {

std::span<const CombineOperation> CombineOperations() {
  static constexpr CombineOperation kOperations[] = {
      {"+   (add)", kAdd},
      {"-   (subtract)", kSubtract},
      {"*   (multiply)", kMultiply},
      {"/   (divide)", kDivide},
      {"^   (power)", kPower},
      {"\\   (integer divide)", kIntegerDivide},
      {"mod (modulus)", kMod},
      {"=   (equal)", kEqual},
      {"<   (less than)", kLess},
      {">   (greater than)", kGreater},
      {"<>  (not equal to)", kUnequal},
      {"<=  (less than or equal to)", kLessOrEqual},
      {">=  (greater than or equal to)", kGreaterOrEqual},
      {"and (logical and)", kAnd},
      {"or  (logical or)", kOr},
      {"xor (logical exclusive or)", kXor},
      {"eqv (equivalence)", kEqv},
      {"imp (implication)", kImp},
  };
  return kOperations;
}

ComputedCells Combine(std::vector<double> a, std::vector<double> b, BinaryCode code) {
  // The operators are those of the equation language: two columns are an expression of two variables, row by row.
  Expression expression;
  expression.ExprTokens = {{.Type = TokenKind::IndependentVariable, .Name = "x1", .Code = 1},
                           {.Type = TokenKind::IndependentVariable, .Name = "x2", .Code = 2},
                           {.Type = TokenKind::Binary, .Name = "", .Code = code}};
  const std::array columns{std::move(a), std::move(b)};
  return EvaluateRows(expression, columns);
}

std::optional<CellRange> CombineRows(const SheetEdit& edit) {
  const std::optional<CellRange> selected = edit.OneRange("Combine");
  if (!selected) return std::nullopt;
  const CellRange rows = edit.DataRows(*selected);
  if (rows.LastRow >= rows.FirstRow) return rows;
  edit.User.Refuse("There is no data to combine.");
  return std::nullopt;
}

bool CombineColumns::Apply(const SheetEdit& edit) const {
  const std::optional<CellRange> rows = CombineRows(edit);
  if (!rows) return false;
  CellRange target = *rows;
  target.FirstCol = target.LastCol = ResultCol;
  const GridCells& cells = edit.Sheet.Cells;
  const ComputedCells combined =
      Combine(CopyColumn(cells, FirstCol, target.FirstRow, target.LastRow),
              CopyColumn(cells, SecondCol, target.FirstRow, target.LastRow), CombineOperations()[Operation].Code);
  StoreComputedCells(edit, UndoOperation::Combine, target, combined);
  return true;
}

}  // namespace quorvex
