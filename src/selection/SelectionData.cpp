#include "selection/SelectionData.h"

#include <cmath>
#include <new>

#include "core/NumberText.h"
#include "sheet/ColumnNames.h"

namespace quorvex {
namespace {

// A step of a transform that a value may not allow.
enum class Operation { Square, Root, Ln, Inverse };

// What a transform does, one after the other.
std::vector<Operation> OperationsOf(YTransform transform) {
  switch (transform) {
    case YTransform::None:
      return {};
    case YTransform::Square:
      return {Operation::Square};
    case YTransform::Root:
      return {Operation::Root};
    case YTransform::Ln:
      return {Operation::Ln};
    case YTransform::Inverse:
      return {Operation::Inverse};
    case YTransform::InverseSquare:
      return {Operation::Inverse, Operation::Square};
    case YTransform::InverseRoot:
      return {Operation::Root, Operation::Inverse};
    case YTransform::InverseLn:
      return {Operation::Ln, Operation::Inverse};
  }
  return {};
}

// What cannot be done with the value; "" where it can.
std::string Impossible(Operation operation, double value) {
  if (operation == Operation::Ln && value <= 0) return "Cannot take the Log10 of ";
  if (operation == Operation::Inverse && value == 0) return "Cannot take the inverse of ";
  if (operation == Operation::Root && value < 0) return "Cannot take the square root of ";
  return {};
}

double Done(Operation operation, double value) {
  switch (operation) {
    case Operation::Square:
      return value * value;
    case Operation::Root:
      return std::sqrt(value);
    case Operation::Ln:
      return std::log(value);
    case Operation::Inverse:
      return 1 / value;
  }
  return value;
}

Result<std::vector<double>> TransformedY(const GatheredData& data, YTransform transform, const LocaleText& locale) {
  std::vector<double> y = data.Points.Y;
  const std::vector<Operation> operations = OperationsOf(transform);
  for (std::size_t i = 0; i < y.size(); ++i) {
    const auto row = [&] { return " in row " + std::to_string(data.Points.Row[i]) + "."; };
    for (const Operation operation : operations) {
      if (const std::string what = Impossible(operation, y[i]); !what.empty())
        return Failure{what + LocalizeExpression(GeneralNumber(y[i]), locale) + row()};
      y[i] = Done(operation, y[i]);
    }
    if (!std::isfinite(y[i]))
      return Failure{"An error occurred during the variable transformation process. " +
                     std::string(kYTransformNames[static_cast<std::size_t>(transform)]) + " is out of range" + row()};
  }
  return y;
}

Result<SelectionData> Prepared(const GatheredData& data, const DataSheet& sheet, const VarSelect& choices,
                               const LocaleText& locale) {
  Result<std::vector<double>> y = TransformedY(data, choices.YTransform, locale);
  if (!y) return Failure{y.error()};
  SelectionData selection;
  selection.Y = std::move(*y);
  selection.SD = data.Points.SD;
  selection.sig = data.Points.sig;
  selection.Weighted = sheet.HasStandardDeviation;
  const std::size_t k = sheet.IndependentVariables;
  const std::vector<std::string> headers = ColumnNames(sheet.Headers);
  selection.YName = choices.YTransform == YTransform::None
                        ? headers[k]
                        : kYTransformNames[static_cast<std::size_t>(choices.YTransform)];

  const std::vector<std::string> names = CandidateNames(headers, k, choices.CrossProducts);
  std::size_t at = 0;
  const auto add = [&](std::size_t i, std::size_t j, bool product) {
    const std::size_t candidate = at++;
    if (choices.Exclude[candidate]) return true;
    std::vector<double> column = data.Points.X[i];
    for (std::size_t row = 0; product && row < column.size(); ++row) {
      column[row] *= data.Points.X[j][row];
      if (!std::isfinite(column[row])) return false;
    }
    selection.Names.push_back(names[candidate]);
    selection.X.push_back(std::move(column));
    selection.Always.push_back(choices.Include[candidate]);
    return true;
  };
  bool good = true;
  for (std::size_t i = 0; i < k; ++i) good = add(i, i, false) && good;
  for (std::size_t i = 0; choices.CrossProducts && i < k; ++i) good = add(i, i, true) && good;
  for (std::size_t i = 0; choices.CrossProducts && i < k; ++i)
    for (std::size_t j = i + 1; j < k; ++j) good = add(i, j, true) && good;
  if (!good) return Failure{"An error occurred while taking the variable cross products."};
  return selection;
}

}  // namespace

std::optional<GatheredData> GatherForSelection(const DataSheet& sheet, const Settings& settings, Prompter& user) {
  GatheredData data = GatherData(sheet, PointOrder::OfSheet);
  if (data.Points.N() < 3) {
    const std::string texts = TextRowsText(data, sheet);
    user.Refuse(texts + (texts.empty() ? "" : " ") +
                "You need at least 3 data points in order to perform variable selection.");
    return std::nullopt;
  }
  if (!MayLeaveOut(data, sheet, settings, user)) return std::nullopt;
  return data;
}

Result<SelectionData> PrepareSelection(const GatheredData& data, const DataSheet& sheet, const VarSelect& choices,
                                       const LocaleText& locale) {
  try {
    return Prepared(data, sheet, choices, locale);
  } catch (const std::bad_alloc&) {
    return Failure{"An unexpected error occurred setting up the variable selection process - Error 7: Out of memory"};
  }
}

}  // namespace quorvex
