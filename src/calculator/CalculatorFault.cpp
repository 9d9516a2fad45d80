#include "calculator/CalculatorFault.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace quorvex {
namespace {

constexpr const char* kInvalid = "This operation caused an invalid mathematical operation.";

constexpr struct {
  CalculatorError Error;
  const char* Text;
} kTexts[] = {
    {CalculatorError::PushFailed, "Error pushing data to stack."},
    {CalculatorError::PopFailed, "Error popping data from stack."},
    {CalculatorError::InvalidOperation, kInvalid},
    {CalculatorError::Overflow, "This operation caused numerical overflow."},
    {CalculatorError::DivisionByZero, "This operation caused division by zero."},
    {CalculatorError::TwoEntriesNeeded, "There must be at least two entries on the stack for this operation."},
    {CalculatorError::NoCommonGrid,
     "An error has occured with one of two possible causes:\r\n"
     "1. The curves do not overlap, or\r\n"
     "2. A numerical error has occured manipulating the data."},
    {CalculatorError::InvalidPower, kInvalid},
    {CalculatorError::SmoothingFailed, "Error in Lowess procedure, the task could not be completed."},
    {CalculatorError::CurveNeeded, "A curve is required to perform this operation."},
    {CalculatorError::FourPointsNeeded, "A curve must contain at least 4 data points to perform this operation."},
    {CalculatorError::TwoCurvesNeeded, "Two curves are required for this operation."},
    {CalculatorError::ScalarNeeded, "The top of the stack must be a scalor for this operation."},
    {CalculatorError::StackEmpty, "The calculator stack is empty."},
    {CalculatorError::NothingToPlot, "Please select a curve in the calculator stack to plot."},
    {CalculatorError::ExportFailed, "Error exporting file."},
    {CalculatorError::NothingToCopy, "There is no data to copy."},
    {CalculatorError::NothingToSample, "There is no data to sample."},
    {CalculatorError::NotAnEquation,
     "Sampling can only be performed on fitted equations (regression or interpolation)."},
    {CalculatorError::SeveralSelected,
     "Only a single equation can be selected at a time in the Available Data list for sampling."},
    {CalculatorError::SamplingFailed,
     "An error occurred during the sampling operation. Make sure the curve is valid within the entered range of "
     "values."},
    {CalculatorError::ShortSection, "The section procedure left less than 2 data points on the curve."},
};

}  // namespace

std::string CalculatorErrorText(CalculatorError error) {
  const auto row = std::ranges::find(kTexts, error, [](const auto& text) { return text.Error; });
  return row != std::end(kTexts) ? row->Text : "An unknown error has occured.";
}

double Finite(double value) {
  if (!std::isfinite(value)) throw CalculatorFault(CalculatorError::Overflow);
  return value;
}

}  // namespace quorvex
