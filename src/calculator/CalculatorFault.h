#pragma once

#include <string>

#include "core/NumericFault.h"

namespace quorvex {

// Why an operation of the calculator comes to nothing, by the numbers that go with the messages.
enum class CalculatorError : int {
  Unknown = 0,
  PushFailed = 1,
  PopFailed = 2,
  InvalidOperation = 5,
  Overflow = 6,
  DivisionByZero = 11,
  TwoEntriesNeeded = 6000,
  NoCommonGrid = 6100,
  InvalidPower = 6200,
  SmoothingFailed = 6255,
  CurveNeeded = 6300,
  FourPointsNeeded = 6305,
  TwoCurvesNeeded = 6400,
  ScalarNeeded = 6500,
  StackEmpty = 7000,
  NothingToPlot = 7100,
  ExportFailed = 8000,
  NothingToCopy = 9000,
  NothingToSample = 9100,
  NotAnEquation = 9200,
  SeveralSelected = 9300,
  SamplingFailed = 9400,
  ShortSection = 9500,
};

std::string CalculatorErrorText(CalculatorError error);

// Ends an operation, from however deep; the calculator catches it once and leaves its stack as it was.
class CalculatorFault final : public NumericFault {
 public:
  explicit CalculatorFault(CalculatorError error) : Error(error) {}

  const CalculatorError Error;
};

// The value, which no operation on finite numbers takes out of range unless it overflows.
double Finite(double value);

}  // namespace quorvex
