#pragma once

#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace quorvex {

// A range for each of some numbers, both ends included; infinite where there is no end.
struct Box {
  std::vector<double> Lower, Upper;

  bool operator==(const Box&) const = default;
  bool Holds(std::span<const double> x) const;
  void BringInside(std::span<double> x) const;
};

// A strictly convex quadratic function of as many numbers as the box has.
struct BoxProblem {
  // The numbers at its minimum over the free ones, while the others stay as in `x`; what it gives for those doesn't
  // count. Nothing where there is none.
  std::function<std::optional<std::vector<double>>(const std::vector<bool>& free, const std::vector<double>& x)>
      Minimum;
  // Minus the gradient at `x`, in units in which the numbers compare.
  std::function<std::vector<double>(const std::vector<double>& x)> Descent;
};

// The minimum of the function over the box: exact to the rounding of `Minimum`, and what lies on a bound does so to the
// bit. The search begins at `x`, inside the box, with what lies between its bounds free; where the minimum over these
// is inside and nothing else wants to move, that is the answer, bit for bit. Nothing where `Minimum` gives nothing.
//
// Method: active set, one bound let go at a time, the one that gains most (P. B. Stark & R. L. Parker, Comput. Stat.
// 10, 1995; after C. L. Lawson & R. J. Hanson, Solving Least Squares Problems, 1974, chapter 23).
std::optional<std::vector<double>> MinimizeInBox(const BoxProblem& problem, const Box& box, std::vector<double> x);

}  // namespace quorvex
