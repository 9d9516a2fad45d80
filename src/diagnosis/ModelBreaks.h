#pragma once

#include <vector>

#include "core/SolveData.h"
#include "engine/ModelClass.h"
#include "engine/SolveForm.h"

namespace quorvex {

enum class BreakKind { NoValue, Pole, Jump };

// A place between two neighbouring X of the data at which the curve of a model is broken.
struct ModelBreak {
  BreakKind Kind;
  double At, Before, After;  // the place, and the X that it lies between
};

// The breaks of a model of one variable with its present coefficients, ascending, one for a gap at most. In each gap
// the model is evaluated at up to 15 points between, of many gaps at fewer, some 200,000 in all. Where the second
// differences of the curve don't shrink as the points close in on the place where they are largest, the curve isn't
// smooth there: they grow or stay at a pole and stay at a jump, while they fall to a half at a kink and to a quarter
// elsewhere. A pole so narrow that the curve has closed again to a millionth of the range of Y at the next of these
// points is missed, and so is a jump below a hundredth of that range. What a model with conditions, comparisons, mod,
// int, fix, floor, ceil or sgn jumps by is meant and no break. Empty for several variables and where `form` is aborted.
// The model stays as it was.
std::vector<ModelBreak> FindBreaks(ModelClass& model, const SolveData& data, SolveForm& form);

}  // namespace quorvex
