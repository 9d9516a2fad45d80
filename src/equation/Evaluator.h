#pragma once

#include <array>
#include <span>
#include <vector>

#include "equation/DataStatistics.h"
#include "equation/Expression.h"
#include "equation/IntrinsicFunctions.h"

namespace quorvex {

// The stack machine that runs a compiled model at one point. It owns the scratch of one model object: the stack, the
// values of supporting functions (which outlive an evaluation: a function whose first reference stands in a branch not
// taken is recalled with the value it had before, 0 in a new object) and the state of "rnd".
class Evaluator {
 public:
  // The value of `expression` at `x` (one number per independent variable) for the coefficients `Values`, in the order
  // of the coefficient list. False where any operation faults (invalid, division by zero, overflow, an argument
  // outside a function's domain); y then keeps what it had.
  bool Evaluate(const Expression& expression, std::span<const double> x, std::span<const double> Values,
                const DataStatistics& statistics, double& y);

 private:
  double Run(const Expression& expression, std::span<const double> x, std::span<const double> Values,
             const DataStatistics& statistics);

  std::vector<double> EvalStack_;  // [0] lies below the first value
  std::array<double, 10> SupportValues_{};
  RandomState random_;
};

}  // namespace quorvex
