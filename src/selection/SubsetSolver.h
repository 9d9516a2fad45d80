#pragma once

#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

#include "core/Result.h"
#include "functions/DoubleDouble.h"
#include "linear/TriangularFactor.h"
#include "selection/SelectionData.h"
#include "selection/SelectionForm.h"

namespace quorvex {

// Candidates of a search, from 0, in the order of their columns.
using Subset = std::vector<std::size_t>;

inline constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

inline constexpr const char* kLeastSquaresError =
    "Error in Least Squares minimization. Check to make sure that you do not have identical, or nearly identical "
    "variables.";

// A coefficient of a fitted model. Where the standard error is 0, of a perfect fit, there is no t, and p is 0 or 1.
struct SubsetCoefficient {
  double Value = 0;
  double Variance = 0;  // in units of the residuals' variance
  double StandardError = 0;
  double t = kUnknown, p = kUnknown;  // value / standard error; the probability of a |t| this large by chance
};

// A linear model of some of the candidates. Sums are of weighted squares; the total is about the mean where the model
// has an intercept, about zero where it has none.
struct SubsetFit {
  Subset Variables;
  std::optional<SubsetCoefficient> Intercept;
  std::vector<SubsetCoefficient> Coefficients;  // one per variable
  double RSS = 0, Total = 0, R2 = 0, StdErr = 0;
  double Cp = kUnknown;  // Mallows' RSS/MSE(all candidates) + 2 terms - N, where that could be solved
  std::size_t DOFError = 0, DOFRegression = 0;
};

// Solves linear models of any of the candidates.
//
// All of them come from one triangular factor of the weighted data, whose columns are centred where the models have an
// intercept, in sums of some 100 bits, and scaled by powers of 2. A model's own factor is made of columns of that one
// by Householder reflections. Its digits are those that the correlations of the variables leave, whatever their units
// and however far they lie from 0, and its cost does not depend on the number of points.
//
// A column counts as nearly identical to those before it where its part that they don't explain is below 2^-26 of the
// whole: where 1 - R^2 of its regression on them is lost in rounding.
class SubsetSolver {
 public:
  static constexpr double kLeastPart = 0x1p-26;

  // Where the form aborts, what is made is of no use.
  SubsetSolver(const SelectionData& data, bool intercept, const SelectionForm& form);

  std::size_t Candidates() const { return columns_.size() - 1; }
  std::size_t N() const { return points_; }
  bool HasIntercept() const { return intercept_; }
  // Coefficients of a model with that many variables.
  std::size_t Terms(std::size_t variables) const { return variables + (intercept_ ? 1 : 0); }

  // Fails with the sentence that says which part of it came to nothing.
  Result<SubsetFit> Fit(const Subset& variables) const;

  // The p of the last coefficient of the model of `in` and each of `others` alone. Fails as Fit does.
  Result<std::vector<double>> EnteringProbabilities(const Subset& in, const Subset& others) const;

  // Statistics of a model of that many variables by the length of what it leaves of Y.
  struct Quality {
    double R2, RSS, StdErr, Cp;
  };
  Quality QualityOf(double rest, std::size_t variables) const;

  // R^2 of the regression of a candidate on the others; 1 where it is a combination of them.
  double R2OnOthers(std::size_t candidate) const;

  // Pearson's coefficients of the candidates and, last, Y. NaN for a column without deviations. Of a solver with an
  // intercept alone.
  std::vector<std::vector<double>> Correlation() const;

  // The factor of these candidates in this order and Y behind them, in units of the solver's own.
  TriangularFactor Factor(const Subset& order) const;
  // Whether what other columns leave of a candidate, by its length in those units, is more than rounding.
  bool HasPartOfItsOwn(double left, std::size_t candidate) const {
    return std::abs(left) > kLeastPart * Length(candidate);
  }

 private:
  // A column as it stands in the factor: its deviations from the mean, times 2^-Exponent. Its values times 2^-Unit, of
  // which Mean is the mean, are near 1, where neither sums nor deviations leave the range.
  struct Column {
    int Unit = 0, Exponent = 0;
    DoubleDouble Mean{0, 0};
    bool Constant = false;  // all of its deviations are exactly 0
    double Length = 0;

    // In the units of the factor.
    DoubleDouble ScaledMean() const {
      return {std::scalbn(Mean.Hi, Unit - Exponent), std::scalbn(Mean.Lo, Unit - Exponent)};
    }
  };

  Column Measured(const std::vector<double>& values, const std::vector<double>& weights) const;
  static double Deviation(double value, const Column& column);
  bool Independent(const ColumnMatrix& r, const Subset& order, std::size_t count) const;
  // In the units of the factor: a coefficient with its variance, and what a fit leaves of Y with its degrees of
  // freedom.
  struct Estimate {
    double Value, Variance;
  };
  struct Noise {
    double Rest, Freedom;
  };
  Estimate InterceptOf(const Subset& variables, const std::vector<double>& b, const ColumnMatrix& r) const;
  const char* Judge(const Estimate& estimate, int exponent, const Noise& noise, SubsetCoefficient& coefficient) const;
  double Length(std::size_t column) const { return columns_[column].Length; }
  const Column& Y() const { return columns_.back(); }

  std::size_t points_;
  bool intercept_;
  std::vector<Column> columns_;       // of the candidates, then of Y
  ColumnMatrix base_;                 // the factor of all of them
  double fullMeanSquare_ = kUnknown;  // MSE of the model of all candidates, over the square of the length of Y
};

}  // namespace quorvex
