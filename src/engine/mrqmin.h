#pragma once

#include <cmath>
#include <cstddef>
#include <functional>
#include <vector>

#include "core/DerivativeKind.h"
#include "core/SolveData.h"
#include "engine/BlockTeam.h"
#include "engine/NormalEquations.h"
#include "engine/PointDerivatives.h"
#include "linear/Matrix.h"
#include "linear/MinimizeInBox.h"

namespace quorvex {

class ModelClass;
class SolveForm;

// Levenberg-Marquardt search for the coefficients that make the merit function
//
//   chisq = sum over points of sig(i) * (y(i) - f(x(i); a))^2
//
// smallest. Despite its name `sig` holds weights of mean 1. Between the calls of one search the object keeps what the
// next step needs. Source: D. W. Marquardt, J. Soc. Indust. Appl. Math. 11 (1963) 431; the damping starts at 0.001 and
// changes tenfold, without an upper bound.
//
// The covariance is the inverse of the curvature matrix, by Gauss-Jordan elimination. Its rounding grows with the
// square of the derivatives' condition, so that a cubic in calendar years has hardly a digit left; where a variance
// comes out much larger than its coefficient alone would have it, the diagonal is computed anew, in a second pass, by
// QR of the weighted derivatives (linear/TriangularFactor.h): six digits and more where the condition of the
// derivatives, scaled to equal lengths, is below 1e9. For that pass numerical derivatives by coefficients in which a
// model is linear are exact to rounding; those by others are right to some ten digits, of which the condition takes its
// share.
//
// Where coefficients have bounds every step is the minimum of the damped quadratic form within them
// (linear/MinimizeInBox.h): a coefficient on a bound that the fit pushes against is left out of it. Steps that meet no
// bound are to the bit those of a search without. A start on a bound where the model has no value or derivative, or
// where that derivative is 0, is first moved inside.
//
// Sums over points are taken block by block, in the order of the data, each block by BlockDot: the same result on every
// run, on every machine and on any number of threads, whether a block was computed as one or point by point.
//
// A trial is given up at the first block where its merit function is no smaller than the best. Where a trial is likely
// to be rejected, after one that was, and for costly derivatives where little is left to gain, its values are computed
// first and its derivatives only if it is better. What would end the search, a point without a derivative or a sum out
// of range, a trial that was given up no longer meets; so far off trials are computed to their end, as is one that
// comes to a bound, which may turn out to be open. Models that draw random numbers are, too, for the sake of the
// numbers that follow.
class LevenbergMarquardt {
 public:
  // The team's model; `derivativeMethod` counts for models that are not built in.
  LevenbergMarquardt(BlockTeam& team, const SolveData& data, DerivativeKind derivativeMethod, SolveForm& form);

  // One step. `alamda` below 0 starts a search from `a`; exactly 0 ends it, leaving the covariance in `covar`: zero for
  // held coefficients.
  // A better trial goes into `a` and `chisq`; after any call `chisq` is the best value so far, so an equal value means
  // that the trial was rejected. `ia` is non-zero for free coefficients. `covar` and `alpha` have the order of `a`.
  // False where the form is aborted on the way: nobody asks for a result any more, and none of these holds one.
  // Throws NumericFault for a singular matrix, a failed derivative, overflow, a start where the model has no value, or
  // more than 100 coefficients; the model's ErrorMessage then says why, or is empty.
  bool mrqmin(std::vector<double>& a, const std::vector<int>& ia, Matrix& covar, Matrix& alpha, double& chisq,
              double& alamda);

 private:
  // What came of a pass over the points: NoBetter where it was given up.
  enum class Pass { Complete, NoValue, NoBetter, Aborted };
  // What a thread computes a block with.
  struct Member {
    PointDerivatives Points;  // whose values become residuals
    NormalEquations Equations;
  };

  void TakeWeights();
  bool ExpectsRejection(const std::vector<double>& a, const std::vector<int>& ia) const;
  Pass Try(const std::vector<double>& a, const std::vector<int>& ia, Matrix& covar, double& chisq);
  Pass StartFrom(std::vector<double>& a, const std::vector<int>& ia, Matrix& alpha, double& chisq);
  bool Judge(std::vector<double>& a, const std::vector<int>& ia, Matrix& covar, Matrix& alpha, double& chisq,
             double& alamda);
  bool StepInside(const std::vector<double>& a, const std::vector<int>& ia, const Matrix& alpha, double alamda);
  bool NoteOpenBounds(const std::vector<double>& a, const std::vector<int>& ia);
  std::vector<int> HoldOnBounds(const std::vector<double>& a, const std::vector<int>& ia, Matrix& alpha);
  bool IsOnBound(const std::vector<double>& a, std::size_t l) const;
  bool AnyOnBound(const std::vector<double>& a, const std::vector<int>& ia) const;
  bool MeetsBound(const std::vector<double>& a, const std::vector<int>& ia, std::size_t l) const;
  // Both give up where chisq is no smaller than `limit`.
  Pass mrqcof(const std::vector<double>& a, Matrix& alpha, std::vector<double>& beta, double& chisq,
              double limit = HUGE_VAL);
  Pass SumSquares(const std::vector<double>& a, double& chisq, double limit);
  template <class Compute, class Take>
  Pass OverBlocks(const std::vector<double>& a, std::size_t slots, Compute compute, Take take);
  bool TakeVariances(const std::vector<double>& a, const std::vector<int>& ia, Matrix& covar);

  BlockTeam& team_;
  ModelClass& model_;
  const SolveData& data_;
  const DerivativeKind derivativeMethod_;
  SolveForm& form_;
  std::vector<Member> members_;
  bool costly_;            // derivatives take many times the values
  bool weighted_ = false;  // the weights are not all 1
  bool givesUp_ = false;   // no block can make the merit function smaller, and none depends on those before it

  const bool bounded_;
  const Box box_;
  std::vector<bool> open_;  // of each coefficient: the model has no value, or no derivative, on a bound of it

  std::size_t mfit_ = 0;
  double ochisq_ = 0;
  bool rejected_ = false;  // the last trial
  double gain_ = 1;        // of the last trial that was not, as a part of the merit function
  std::vector<double> atry_, beta_, da_;
};

}  // namespace quorvex
