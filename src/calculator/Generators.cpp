#include "calculator/Generators.h"

#include <array>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "calculator/CalculatorFault.h"
#include "calculator/Operations.h"
#include "core/NumberText.h"
#include "engine/TableRange.h"
#include "equation/Evaluator.h"
#include "equation/Parser.h"
#include "functions/Elementary.h"

namespace quorvex {
namespace {

// A whole number of points, nothing for other texts.
std::optional<double> WholeNumber(const std::string& text, const LocaleText& locale) {
  const auto number = NumericText(text, locale.DecimalSeparator);
  return number && *number == std::trunc(*number) ? number : std::nullopt;
}

// What an expression has or lacks that the calculator cannot do with or without; "" where it is fine, or does not
// compile.
std::string FaultOf(const Expression& expression) {
  // No data are there that words such as "xmean" could speak of.
  if (expression.ParseError || AsksForStatistics(expression)) return "";
  if (expression.HasCoefficients)
    return "It appears to contain variable coefficients, which are not allowed in the calculator. ";
  if (!expression.HasIndependentVar) return "It does not appear to contain the independent variable 'X'. ";
  return "";
}

// The values of a model or an interpolation. Throws CalculatorFault where it has none.
std::vector<double> ValuesAt(const PlotSeries& equation, const std::vector<double>& X) {
  // A copy, since a model keeps scratch of its evaluations.
  const std::unique_ptr<ModelClass> model = equation.Model() != nullptr ? equation.Model()->CopyTo() : nullptr;
  std::vector<double> Y;
  Y.reserve(X.size());
  for (const double x : X) {
    double y = 0;
    const bool has = model != nullptr ? model->Evaluate(std::array{x}, y) : equation.Interpolation()->Evaluate(x, y);
    if (!has || !std::isfinite(y)) throw CalculatorFault(CalculatorError::SamplingFailed);
    Y.push_back(y);
  }
  return Y;
}

std::vector<double> EvenX(const XRange& range, int points) {
  return TablePoints({range.Min, range.Max, points}, range.Min, range.Max, true);
}

// The X that it was fitted to.
std::vector<double> FittedX(const PlotSeries& equation) {
  std::vector<double> X;
  for (std::size_t i = 1; i <= equation.NumInputX(); ++i)
    X.push_back(equation.Model() != nullptr ? equation.Model()->InputX(i) : equation.Interpolation()->InputX(i));
  return X;
}

}  // namespace

Result<PlotSeries> DistributionCurve::Make(const LocaleText& locale) const {
  const auto number = [&](const std::string& text) { return NumericText(text, locale.DecimalSeparator); };
  const auto s = number(StandardDeviation), m = number(Mean), n = WholeNumber(Points, locale), k = number(Range);
  if (!s || *s <= 0) return Failure{"Please enter a valid number for the Standard Deviation of the distribution."};
  if (!m) return Failure{"Please enter a valid number for the Mean of the distribution."};
  if (!n || *n > kMostSamples) return Failure{"Please enter a valid number for the total number of points."};
  if (*n <= 2) return Failure{"The total number of points must be > 2."};
  if (!k) return Failure{"Please enter a valid number the range of Standard Deviations to plot."};
  if (*k <= 1) return Failure{"The range of Standard Deviations must be > 1."};

  const double a = 1 / (std::sqrt(6.28318) * *s), last = *n - 1;
  std::vector<double> X, Y;
  for (double i = 0; i <= last; ++i) {
    // In standard deviations, so that the curve is symmetric to the bit.
    const double z = *k * ((2 * i - last) / last);
    X.push_back(*m + z * *s);
    Y.push_back(a * Exp(-z * z / 2));
    // Too wide for numbers, or so narrow that points fall on each other.
    if (!std::isfinite(X.back()) || !std::isfinite(Y.back()) || (i > 0 && X.back() <= X[X.size() - 2]))
      return Failure{"Error creating Normal Distribution."};
  }
  return NewCurve(std::move(X), std::move(Y),
                  "ND: Avg = " + Numberclass::TextOf(*m, locale) + ", SDev = " + Numberclass::TextOf(*s, locale));
}

Result<PlotSeries> ExpressionCurve::Make(const LocaleText& locale) const {
  const std::string text(Trim(Function));
  if (text.empty()) return Failure{"Please enter a valid expression."};
  const Result<XRange> range = ParseXRange(Min, Max, locale);
  if (!range) return Failure{range.error()};
  const auto samples = WholeNumber(Samples, locale);
  if (!samples) return Failure{"Please enter the number of samples."};
  if (*samples <= 2) return Failure{"The number of samples must be larger then 2."};
  if (*samples >= kMostSamples) return Failure{"The number of samples must be less than 65,536."};

  const Expression expression = Parser(Dialect::OneVariable, locale).Compile({text});
  const std::string fault = FaultOf(expression);
  if (!fault.empty() || expression.ParseError || AsksForStatistics(expression))
    return Failure{"The equation you entered is not valid. " + fault + "Please check the equation syntax."};

  const Failure noValue{"An Error occured while evaluating the equation. Please check your input."};
  if (!std::isfinite(range->Max - range->Min)) return noValue;
  std::vector<double> X = EvenX(*range, static_cast<int>(*samples)), Y;
  Evaluator evaluator;
  for (const double x : X) {
    double y = 0;
    if (!evaluator.Evaluate(expression, std::array{x}, {}, {}, y) || !std::isfinite(y)) return noValue;
    Y.push_back(y);
  }
  return NewCurve(std::move(X), std::move(Y), text);
}

SampledCurve SampledCurve::Defaults(const PlotSeries& equation, const Settings& settings, const LocaleText& locale) {
  return {.XMin = ExactText(equation.InputXMin(), locale),
          .XMax = ExactText(equation.InputXMax(), locale),
          .Samples = std::to_string(settings.Integer("pointsperplot"))};
}

Result<PlotSeries> SampledCurve::Make(const PlotSeries& equation, const LocaleText& locale) const {
  std::vector<double> X;
  if (SampleFitted) {
    X = FittedX(equation);
  } else {
    const auto samples = WholeNumber(Samples, locale);
    const auto max = NumericText(XMax, locale.DecimalSeparator), min = NumericText(XMin, locale.DecimalSeparator);
    constexpr int kFewest = 3;
    if (!samples || *samples < kFewest || *samples > kMostSamples)
      return Failure{"Please enter a valid number for the number of samples [3-65536]."};
    if (!max) return Failure{"Please enter a valid number for XMax."};
    if (!min) return Failure{"Please enter a valid number for XMin."};
    if (*max <= *min) return Failure{"Xmax must be greate than XMin."};
    if (!std::isfinite(*max - *min)) return Failure{"Invalid entry, please check your input."};
    if (equation.Interpolation() != nullptr) {
      const std::string only = "Interpolation models can only be sampled within the range of input data. ";
      if (*min < equation.InputXMin()) return Failure{only + "XMin is too small."};
      if (*max > equation.InputXMax()) return Failure{only + "XMax is too large."};
    }
    X = EvenX({*min, *max}, static_cast<int>(*samples));
  }
  try {
    if (X.empty()) throw CalculatorFault(CalculatorError::SamplingFailed);
    std::vector<double> Y = ValuesAt(equation, X);
    return NewCurve(std::move(X), std::move(Y), "Sample(" + equation.Style().LegendText + ")", equation.Style());
  } catch (const CalculatorFault& fault) {
    return Failure{CalculatorErrorText(fault.Error)};
  }
}

PlotSeries TableOf(const PlotSeries& equation, int points) {
  std::vector<double> X = EvenX({equation.InputXMin(), equation.InputXMax()}, points);
  std::vector<double> Y = ValuesAt(equation, X);
  return NewCurve(std::move(X), std::move(Y), equation.Style().LegendText, equation.Style());
}

}  // namespace quorvex
