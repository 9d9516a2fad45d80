#pragma once

#include <cmath>

#include "functions/betai.h"
#include "functions/gamma.h"

namespace quorvex {

// The probability that F (or t^2, with one degree for the regression) with dfRegression and dfError degrees of freedom
// exceeds f by chance. f may be infinite. With an infinite dfError what exceeds f is a mean of squares of normal
// deviates: chi-square over its degrees of freedom. Throws NumericFault as betai and gammq do.
inline double ProbabilityBeyond(double f, double dfRegression, double dfError) {
  if (std::isinf(dfError)) return std::isinf(f) ? 0 : gammq(dfRegression / 2, dfRegression * f / 2);
  return betai(dfError / 2, dfRegression / 2, dfError / (dfError + dfRegression * f));
}

}  // namespace quorvex
