#include "sheet/DataSweep.h"

#include <cmath>
#include <utility>
#include <vector>

#include "core/NumberText.h"
#include "core/Result.h"
#include "equation/Parser.h"
#include "sheet/ColumnNames.h"
#include "sheet/ComputedCells.h"

namespace quorvex {
namespace {

const Failure kNumericalError{"A numerical error has ocurred."};
const Failure kSweepError{"An error occurred sweeping the equation."};

std::optional<double> WholeNumber(const std::string& text, const LocaleText& locale) {
  const std::optional<double> number = NumericText(text, locale.DecimalSeparator);
  return number && *number == std::trunc(*number) ? number : std::nullopt;
}

// The rows and the column to fill. The words of the third refusal say the opposite of what they mean.
Result<CellRange> SweptRange(const DataSweep& sweep, const LocaleText& locale) {
  const std::optional<double> start = WholeNumber(sweep.SelRow1, locale), end = WholeNumber(sweep.SelRow2, locale);
  if (!start) return Failure{"Please enter a valid Start Row."};
  if (!end) return Failure{"Please enter a valid End Row."};
  if (*start > *end) return Failure{"Start Row must be greater than End Row."};
  const std::string limit = std::to_string(kMostSheetRows);
  if (*start > kMostSheetRows) return Failure{"Start Row is larger than " + limit};
  if (*end > kMostSheetRows) return Failure{"End Row is larger than " + limit};
  if (*start < 1) return Failure{"Start Row must be larger than 0."};
  if (*end < 1) return Failure{"End Row must be larger than 0."};
  return CellRange{static_cast<std::size_t>(*start), sweep.SelCol, static_cast<std::size_t>(*end), sweep.SelCol};
}

// start, start + increment, ... each summed onto the one before; `overflow` where that leaves the range of a double.
Result<std::vector<double>> Steps(double start, double increment, std::size_t count, const Failure& overflow) {
  std::vector<double> values{start};
  while (values.size() < count) values.push_back(values.back() + increment);
  if (!std::isfinite(values.back())) return overflow;
  return values;
}

Result<Expression> CompileSweep(const std::string& text, const LocaleText& locale) {
  if (Trim(text).empty()) return Failure{"Please enter a valid equation."};
  const auto refuse = [](const char* why) {
    return Failure{std::string("The equation you entered is not valid. ") + why + "Please check the equation syntax."};
  };
  Expression expression = Parser(Dialect::OneVariable, locale).Compile({text});
  // A sweep has no data that words such as "xmean" could speak of, and zeros in their place would pass for results.
  if (expression.ParseError || AsksForStatistics(expression)) return refuse("");
  if (expression.HasCoefficients)
    return refuse("It appears to contain variable coefficients, which are not allowed when sweeping data. ");
  if (!expression.HasIndependentVar) return refuse("It does not appear to contain the independent variable 'X'. ");
  return expression;
}

// The new cells of `range` for one method each.

Result<ComputedCells> SweepConstant(const DataSweep& sweep, const SheetEdit& edit, const CellRange& range) {
  const std::optional<double> constant = NumericText(sweep.ConstantText, edit.Locale.DecimalSeparator);
  if (!constant) return Failure{"Please enter a valid constant."};
  return ComputedCells{std::vector<double>(range.LastRow - range.FirstRow + 1, *constant)};
}

Result<ComputedCells> SweepLinear(const DataSweep& sweep, const SheetEdit& edit, const CellRange& range) {
  const std::optional<double> start = NumericText(sweep.LinStart, edit.Locale.DecimalSeparator),
                              increment = NumericText(sweep.LinIncrement, edit.Locale.DecimalSeparator);
  if (!start) return Failure{"Please enter a valid number for the starting value."};
  if (!increment) return Failure{"Please enter a valid number for the increment."};
  auto values = Steps(*start, *increment, range.LastRow - range.FirstRow + 1, kNumericalError);
  if (!values) return Failure{values.error()};
  return ComputedCells{std::move(*values)};
}

Result<ComputedCells> SweepFunction(const DataSweep& sweep, const SheetEdit& edit, const CellRange& range) {
  const std::optional<double> start = NumericText(sweep.FuncStart, edit.Locale.DecimalSeparator),
                              increment = NumericText(sweep.FuncIncrement, edit.Locale.DecimalSeparator);
  if (!start) return Failure{"Please enter a valid number for the X starting value."};
  if (!increment) return Failure{"Please enter a valid number for the X increment."};
  const Result<Expression> expression = CompileSweep(sweep.FuncText, edit.Locale);
  if (!expression) return Failure{expression.error()};
  const auto x = Steps(*start, *increment, range.LastRow - range.FirstRow + 1, kSweepError);
  if (!x) return Failure{x.error()};
  return EvaluateRows(*expression, {&*x, 1});
}

Result<ComputedCells> SweepColumn(const DataSweep& sweep, const SheetEdit& edit, const CellRange& range) {
  const std::optional<double> col = WholeNumber(sweep.ColumnText, edit.Locale);
  if (!col) return Failure{"Please enter a valid column number for the variable X. "};
  const std::size_t lastCol = edit.Sheet.ColumnCount();
  if (*col < 1 || *col > static_cast<double>(lastCol))
    return Failure{"The column value must be in the range (1-" + std::to_string(lastCol) + ")"};
  const Result<Expression> expression = CompileSweep(sweep.ColumnFunc, edit.Locale);
  if (!expression) return Failure{expression.error()};
  const std::vector<double> x =
      CopyColumn(edit.Sheet.Cells, static_cast<std::size_t>(*col), range.FirstRow, range.LastRow);
  return EvaluateRows(*expression, {&x, 1});
}

constexpr struct {
  const char* Name;
  Result<ComputedCells> (*Compute)(const DataSweep&, const SheetEdit&, const CellRange&);
} kMethods[] = {{"Constant", SweepConstant},
                {"Linear", SweepLinear},
                {"Function", SweepFunction},
                {"Function", SweepColumn}};  // in the order of SweepMethod

}  // namespace

bool DataSweep::Apply(const SheetEdit& edit) const {
  const auto refuse = [&](const std::string& text) {
    edit.User.Refuse(text);
    return false;
  };
  const Result<CellRange> range = SweptRange(*this, edit.Locale);
  if (!range) return refuse(range.error());
  const auto& method = kMethods[static_cast<std::size_t>(MethodOption)];
  const Result<ComputedCells> computed = method.Compute(*this, edit, *range);
  if (!computed) return refuse(computed.error());
  const UndoLabel label(UndoOperation::Sweep, method.Name + (" in " + ColumnName(edit.Sheet, SelCol)));
  StoreComputedCells(edit, label, *range, *computed);
  return true;
}

std::optional<DataSweep> EditFill(const SheetEdit& edit) {
  if (edit.Selection.empty()) {
    edit.User.Refuse("Please select a range of rows in a single column.");
    return std::nullopt;
  }
  const std::optional<CellRange> range = edit.OneRange("Fill");
  if (!range) return std::nullopt;
  if (range->FirstCol != range->LastCol) {
    edit.User.Refuse("Only a single column may be selected for this operation.");
    return std::nullopt;
  }
  DataSweep sweep;
  sweep.SelRow1 = std::to_string(range->FirstRow);
  sweep.SelRow2 = std::to_string(range->LastRow);
  sweep.SelCol = range->FirstCol;
  return sweep;
}

}  // namespace quorvex
