#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "calculator/PointFunctions.h"
#include "calculator/Stackclass.h"
#include "calculator/XRange.h"

namespace quorvex {

// How the user has set the calculator.
struct OperationSetup {
  AngleUnit Unit = AngleUnit::Radians;
  bool Arc = false;
  LocaleText Locale;
  // Asks for the range of a section of a curve over `whole`; nothing where the user cancels.
  std::function<std::optional<XRange>(const XRange& whole)> AskSection;
};

// A key of the calculator: its caption, and what it does in words.
struct OperationKey {
  int Index;
  const char* Caption;
  const char* Description;
};
std::span<const OperationKey> ArithmeticKeys();
std::span<const OperationKey> OperationKeys();

// Index 0 to 3: adds, subtracts, multiplies or divides the two top entries, the lower one being the left operand.
// Curves meet on a common grid. Throws CalculatorFault, as below, with the stack as it may be then.
void arithmetic(int Index, Stackclass& stack, const OperationSetup& setup);

// The operation of a key. False where the user cancelled it.
bool operations(int Index, Stackclass& stack, const OperationSetup& setup);

// A legend of no more than a thousand characters: one that is added to itself doubles each time.
std::string CutLegend(std::string legend);

// A new curve with these points and that look.
PlotSeries NewCurve(std::vector<double> X, std::vector<double> Y, const std::string& legend, SeriesStyle style = {});

}  // namespace quorvex
