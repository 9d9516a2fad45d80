#pragma once

#include "functions/betai.h"

namespace quorvex {

// The probability that F (or t^2, with one degree for the regression) with dfRegression and dfError degrees of freedom
// exceeds f by chance. f may be infinite. Throws NumericFault as betai does.
inline double ProbabilityBeyond(double f, double dfRegression, double dfError) {
  return betai(dfError / 2, dfRegression / 2, dfError / (dfError + dfRegression * f));
}

}  // namespace quorvex
