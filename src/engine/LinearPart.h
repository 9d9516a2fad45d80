#pragma once

#include <optional>
#include <span>
#include <vector>

#include "engine/WeightedResiduals.h"
#include "linear/SvdDecompose.h"

namespace quorvex {

// The z of least length among those for which |A z - b| is least, and that length as part of |b|. Columns are scaled to
// equal lengths first; directions that are dependent to the part `singular` are left out. Nothing where it isn't
// finite.
struct LeastSquares {
  std::vector<double> z;
  double Remainder = 0;
};
std::optional<LeastSquares> SolveLeastSquares(ColumnMatrix A, std::span<const double> b, double singular);

// The same within a box. The Remainder is left at 0.
std::optional<LeastSquares> SolveLeastSquaresInside(const ColumnMatrix& A, std::span<const double> b, double singular,
                                                    const Box& box);

// Solves for the coefficients that enter a model linearly while the others stand: the residuals are then a function of
// the others alone (variable projection: G. H. Golub & V. Pereyra, SIAM J. Numer. Anal. 10, 1973).
class LinearPart {
 public:
  // `linear` says of each free coefficient whether it enters linearly, together with all others that do.
  LinearPart(WeightedResiduals& residuals, const std::vector<bool>& linear);

  // Puts the best linear coefficients within their bounds into `a`, and the residuals there into `r`. False where there
  // are none.
  bool Solve(std::vector<double>& a, std::vector<double>& r);
  // The same, where it makes the residuals smaller than those in `r`. `r` holds the residuals at `a` before and after.
  void Improve(std::vector<double>& a, std::vector<double>& r);

  std::size_t Count() const { return which_.size(); }

 private:
  WeightedResiduals& residuals_;
  std::vector<std::size_t> which_;
  std::vector<double> none_, one_;  // the fit without the linear coefficients, and with one of them
};

}  // namespace quorvex
