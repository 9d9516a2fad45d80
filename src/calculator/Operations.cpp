#include "calculator/Operations.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string>
#include <utility>

#include "analysis/LowessSmooth.h"
#include "calculator/CalculatorFault.h"
#include "calculator/CurveCalculus.h"
#include "calculator/FourierTransform.h"
#include "calculator/GetCompatableSignals.h"

namespace quorvex {
namespace {

constexpr OperationKey kArithmetic[] = {
    {0, "+", "Add"}, {1, "-", "Subtract"}, {2, "*", "Multiply"}, {3, "/", "Divide"}};
constexpr const char* kOperators[] = {" + ", " - ", " * ", " / "};

enum Operation : int {
  kIntegral = 4,
  kDerivative = 9,
  kRaise = 12,
  kVersus = 16,
  kMax = 17,
  kMin = 18,
  kSum = 19,
  kCount = 20,
  kSwap = 21,
  kFft = 23,
  kSection = 24,
  kSmooth = 25,
  kAverage = 26,
  kSort = 27,
  kSecondDerivative = 28,
};

constexpr OperationKey kOperations[] = {
    {0, "+/-", "Change the sign"},
    {1, "sin", "Sine"},
    {2, "cos", "Cosine"},
    {3, "tan", "Tangent"},
    {kIntegral, "integral", "Running integral of a curve"},
    {5, "abs", "Absolute value"},
    {6, "sinh", "Hyperbolic sine"},
    {7, "cosh", "Hyperbolic cosine"},
    {8, "tanh", "Hyperbolic tangent"},
    {kDerivative, "d/dx", "Derivative of a curve"},
    {10, "1/x", "Reciprocal"},
    {11, "exp", "Exponential"},
    {kRaise, "y^x", "Raise the second entry to the number on top"},
    {13, "sqrt", "Square root"},
    {14, "ln", "Natural logarithm"},
    {15, "log10", "Common logarithm"},
    {kVersus, "vs", "The top curve over the values of the second one"},
    {kMax, "Max", "Largest value of a curve"},
    {kMin, "Min", "Smallest value of a curve"},
    {kSum, "Sum", "Sum of the values of a curve"},
    {kCount, "Count", "Number of points of a curve"},
    {kSwap, "Swap", "Exchange X and Y of a curve"},
    {22, "dB", "Decibels, 20 times the common logarithm"},
    {kFft, "FFT", "Fourier transform of a curve: magnitude and phase"},
    {kSection, "Sect", "The part of a curve within a range of X"},
    {kSmooth, "Smth", "Smooth a curve by local regression"},
    {kAverage, "Avg", "Mean of the values of a curve"},
    {kSort, "Sort", "Sort the points of a curve by X"},
    {kSecondDerivative, "d/dx2", "Second derivative of a curve"},
};

double Combined(int Index, double a, double b) {
  switch (Index) {
    case 0:
      return Finite(a + b);
    case 1:
      return Finite(a - b);
    case 2:
      return Finite(a * b);
    default:
      if (b == 0) throw CalculatorFault(CalculatorError::DivisionByZero);
      return Finite(a / b);
  }
}

Numberclass NewNumber(double value, std::string legend, const LocaleText& locale) {
  Numberclass number(value, locale);
  number.LegendText = CutLegend(std::move(legend));
  return number;
}

// The points of a curve on the grid of another one, or a number instead of it at each point.
struct Operands {
  Operands(const StackEntry& left, const StackEntry& right) {
    const auto *first = std::get_if<PlotSeries>(&left), *second = std::get_if<PlotSeries>(&right);
    const auto values = [&](const StackEntry& number) {
      return std::vector<double>(grid.X.size(), std::get<Numberclass>(number).Value());
    };
    if (first != nullptr && second != nullptr) {
      grid = GetCompatableSignals(first->CopyDataTo(), second->CopyDataTo());
    } else {
      const SeriesTable table = (first != nullptr ? first : second)->CopyDataTo();
      grid.X.assign(table.X.begin(), table.X.end());
      auto& points = first != nullptr ? grid.Y1 : grid.Y2;
      points.assign(table.Y.begin(), table.Y.end());
      (first != nullptr ? grid.Y2 : grid.Y1) = values(first != nullptr ? right : left);
    }
    style = (first != nullptr ? first : second)->Style();
  }

  CompatableSignals grid;
  SeriesStyle style;
};

// What f makes of an entry: of each Y of a curve, or of a number.
template <typename Function>
StackEntry Applied(const StackEntry& entry, const std::string& legend, const LocaleText& locale, const Function& f) {
  if (const auto* number = std::get_if<Numberclass>(&entry)) return NewNumber(f(number->Value()), legend, locale);
  const auto& curve = std::get<PlotSeries>(entry);
  const SeriesTable table = curve.CopyDataTo();
  std::vector<double> y(table.Y.size());
  std::ranges::transform(table.Y, y.begin(), f);
  return NewCurve({table.X.begin(), table.X.end()}, std::move(y), legend, curve.Style());
}

// The one number that stands for an entry, which may be a number itself.
void PushFigure(int Index, const StackEntry& entry, Stackclass& stack, const LocaleText& locale) {
  const auto* number = std::get_if<Numberclass>(&entry);
  const std::vector<double> values = [&]() -> std::vector<double> {
    if (number != nullptr) return {number->Value()};
    const SeriesTable table = std::get<PlotSeries>(entry).CopyDataTo();
    return {table.Y.begin(), table.Y.end()};
  }();
  const auto count = static_cast<double>(values.size());
  const auto sum = [&] { return Finite(std::accumulate(values.begin(), values.end(), 0.0)); };
  switch (Index) {
    case kMax:
      return stack.Push(Numberclass(*std::ranges::max_element(values), locale));
    case kMin:
      return stack.Push(Numberclass(*std::ranges::min_element(values), locale));
    case kSum:
      return stack.Push(NewNumber(sum(), "Sum(" + LegendText(entry) + ")", locale));
    case kAverage:
      return stack.Push(Numberclass(sum() / count, locale));
    default:
      return stack.Push(Numberclass(count, locale));
  }
}

void Raise(Stackclass& stack, const LocaleText& locale) {
  if (stack.NumElements() < 2) throw CalculatorFault(CalculatorError::TwoEntriesNeeded);
  const StackEntry top = stack.Pop();
  const auto* power = std::get_if<Numberclass>(&top);
  if (power == nullptr) throw CalculatorFault(CalculatorError::ScalarNeeded);
  const StackEntry base = stack.Pop();
  stack.Push(Applied(base, "(" + LegendText(base) + ") ^ " + power->LegendText, locale,
                     [&](double y) { return RaisedTo(y, power->Value()); }));
}

void Versus(Stackclass& stack) {
  if (stack.NumElements() < 2) throw CalculatorFault(CalculatorError::TwoCurvesNeeded);
  const StackEntry top = stack.Pop(), second = stack.Pop();
  const auto *y = std::get_if<PlotSeries>(&top), *x = std::get_if<PlotSeries>(&second);
  if (y == nullptr || x == nullptr) throw CalculatorFault(CalculatorError::TwoCurvesNeeded);
  CompatableSignals both = GetCompatableSignals(y->CopyDataTo(), x->CopyDataTo());
  stack.Push(NewCurve(std::move(both.Y2), std::move(both.Y1), "(" + LegendText(top) + " vs " + LegendText(second) + ")",
                      y->Style()));
}

void PushSpectrum(const PlotSeries& curve, Stackclass& stack, AngleUnit unit) {
  Spectrum spectrum = FourierTransform(curve.CopyDataTo().Y);
  constexpr double kDegrees = 180 / 3.141592654;
  if (unit == AngleUnit::Degrees)
    for (double& phase : spectrum.Phase) phase *= kDegrees;
  const std::string text = curve.Style().LegendText + ")";
  stack.Push(NewCurve(spectrum.Frequency, std::move(spectrum.Phase), "FFT Phase( " + text, curve.Style()));
  stack.Push(NewCurve(std::move(spectrum.Frequency), std::move(spectrum.Magnitude), "FFT Mag (" + text, curve.Style()));
}

// The points in order, with Y smoothed over a tenth of them.
CurvePoints SmoothedPoints(SeriesTable table) {
  constexpr double kWindow = 0.1;
  CurvePoints points = SortedByX(table);
  std::optional<Smoothed> smoothed = LowessSmooth(points.X, points.Y, kWindow, kLowessSteps, LowessDelta(points.X));
  if (!smoothed) throw CalculatorFault(CalculatorError::SmoothingFailed);
  points.Y = std::move(smoothed->ys);
  return points;
}

// A curve made of a curve. Nothing where the user cancelled.
std::optional<PlotSeries> CurveOf(int Index, const PlotSeries& curve, const OperationSetup& setup) {
  const SeriesTable table = curve.CopyDataTo();
  const auto made = [&](const char* prefix, CurvePoints points) {
    return NewCurve(std::move(points.X), std::move(points.Y), prefix + curve.Style().LegendText + ")", curve.Style());
  };
  const std::vector<double> x(table.X.begin(), table.X.end());
  switch (Index) {
    case kIntegral:
      return made("Integral(", {x, Integral(table)});
    case kDerivative:
      return made("d/dx(", {x, Derivative(table, DerivativeMode::First)});
    case kSecondDerivative:
      return made("d/dx2(", {x, Derivative(table, DerivativeMode::Second)});
    case kSwap:
      return made("Flip(", {{table.Y.begin(), table.Y.end()}, x});
    case kSort:
      return made("Sort(", SortedByX(table));
    case kSmooth:
      return made("Smooth(", SmoothedPoints(table));
    default:
      break;
  }
  const auto range = setup.AskSection({curve.InputXMin(), curve.InputXMax()});
  if (!range) return std::nullopt;
  CurvePoints section = Section(table, range->Min, range->Max);
  if (section.X.size() < 2) throw CalculatorFault(CalculatorError::ShortSection);
  return made("Sect(", std::move(section));
}

}  // namespace

std::span<const OperationKey> ArithmeticKeys() { return kArithmetic; }
std::span<const OperationKey> OperationKeys() { return kOperations; }

std::string CutLegend(std::string legend) {
  constexpr std::size_t kMost = 1000;
  std::string cut = FirstCharacters(legend, kMost);
  return cut.size() < legend.size() ? cut + "..." : legend;
}

PlotSeries NewCurve(std::vector<double> X, std::vector<double> Y, const std::string& legend, SeriesStyle style) {
  DataClass data;
  data.id = data.Description = legend;
  data.GenerateTable({std::move(X)}, std::move(Y));
  style.LegendText = CutLegend(legend);
  style.ShowErrorBars = false;
  return {std::move(data), std::move(style)};
}

void arithmetic(int Index, Stackclass& stack, const OperationSetup& setup) {
  if (stack.NumElements() < 2) throw CalculatorFault(CalculatorError::TwoEntriesNeeded);
  const StackEntry right = stack.Pop(), left = stack.Pop();
  const std::string legend = "(" + LegendText(left) + kOperators[Index] + LegendText(right) + ")";
  const auto *a = std::get_if<Numberclass>(&left), *b = std::get_if<Numberclass>(&right);
  if (a != nullptr && b != nullptr)
    return stack.Push(NewNumber(Combined(Index, a->Value(), b->Value()), legend, setup.Locale));
  Operands operands(left, right);
  CompatableSignals& grid = operands.grid;
  std::ranges::transform(grid.Y1, grid.Y2, grid.Y1.begin(),
                         [&](double y1, double y2) { return Combined(Index, y1, y2); });
  stack.Push(NewCurve(std::move(grid.X), std::move(grid.Y1), legend, std::move(operands.style)));
}

bool operations(int Index, Stackclass& stack, const OperationSetup& setup) {
  if (Index == kRaise) {
    Raise(stack, setup.Locale);
    return true;
  }
  if (Index == kVersus) {
    Versus(stack);
    return true;
  }
  const StackEntry& top = std::as_const(stack).Top();
  if (const PointFunction* function = FindPointFunction(Index)) {
    const char* prefix = setup.Arc && function->Arc != nullptr ? function->ArcLegend : function->Legend;
    StackEntry result = Applied(top, prefix + LegendText(top) + ")", setup.Locale,
                                [&](double y) { return ValueOf(*function, setup.Arc, setup.Unit, y); });
    stack.Pop();
    stack.Push(std::move(result));
    return true;
  }
  constexpr std::array kFigures = {kMax, kMin, kSum, kCount, kAverage};
  if (std::ranges::find(kFigures, Index) != kFigures.end()) {
    PushFigure(Index, stack.Pop(), stack, setup.Locale);
    return true;
  }
  if (!std::holds_alternative<PlotSeries>(top)) throw CalculatorFault(CalculatorError::CurveNeeded);
  const PlotSeries curve = std::get<PlotSeries>(stack.Pop());
  if (Index == kFft) {
    PushSpectrum(curve, stack, setup.Unit);
    return true;
  }
  std::optional<PlotSeries> made = CurveOf(Index, curve, setup);
  stack.Push(made ? std::move(*made) : curve);
  return made.has_value();
}

}  // namespace quorvex
