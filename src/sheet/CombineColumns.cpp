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
  Expression expression;
  expression.ExprTokens = {{.Type = TokenKind::IndependentVariable, .Name = "x1", .Code = 1},
                           {.Type = TokenKind::IndependentVariable, .Name = "x2", .Code = 2},
                           {.Type = TokenKind::Binary, .Name = "", .Code = code}};
  const std::array columns{std::move(a), std::move(b)};
  return EvaluateRows(expression, columns);
}

bool CombineColumns::Apply(const SheetEdit& edit) const {
  const std::optional<CellRange> selected = edit.OneRange("Combine");
  if (!selected) return false;
  CellRange target = edit.DataRows(*selected);
  if (target.LastRow < target.FirstRow) return false;
  target.FirstCol = target.LastCol = ResultCol;
  const GridCells& cells = edit.Sheet.Cells;
  const ComputedCells combined =
      Combine(CopyColumn(cells, FirstCol, target.FirstRow, target.LastRow),
              CopyColumn(cells, SecondCol, target.FirstRow, target.LastRow), CombineOperations()[Operation].Code);
  StoreComputedCells(edit, "&Undo Combine", target, combined);
  return true;
}

}  // namespace quorvex
