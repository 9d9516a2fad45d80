#pragma once

#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/LossKind.h"
#include "equation/DataStatistics.h"

namespace quorvex {

// The input as a model keeps it for tables, plots and files, column by column. With one variable a run of neighbours
// with equal X counts once, with the Y of its first point.
struct InputPoints {
  std::vector<std::vector<double>> X;
  std::vector<double> Y;

  bool operator==(const InputPoints&) const = default;
};

// What a fit notes of its data.
struct FitInput {
  std::shared_ptr<const InputPoints> Points;
  DataStatistics Statistics;
  bool IsWhole = false;  // else a statistic has no value, where a fit fails
};

// Why a nonlinear search came to its end, by the numbers that project files store.
enum class SearchEnd : int { Converged = 0, Unchanged = 1, IterationLimit = 2, Paused = 3 };

// What one set of initial estimates of a sweep led to.
struct SweepRow {
  std::vector<double> Start;
  std::vector<double> Final;  // empty where a project file tells of the start alone; the numbers below are then 0
  double RSS = 0, R2Adjust = 0, R2 = 0, StdErr = 0, RssNorm = 0;

  bool operator==(const SweepRow&) const = default;
};

// All that solving a model leaves behind. Vectors with an element per coefficient count from 0.
struct FitResult {
  bool Solved = false;     // the last Fit succeeded
  bool ErrorInfo = false;  // Fit has computed coefficients and covariance
  int SweepCount = 0;      // sets of initial estimates that led to a solution; 0 without a sweep
  int NumIterations = 0;   // of the last nonlinear fit
  // The end of the nonlinear search that the solution comes from.
  SearchEnd Ended = SearchEnd::Converged;
  // What found the solution where the ordinary search didn't, in plain words (engine/TryHarder.h); else empty.
  std::string FoundBy;
  // What residuals counted as, and the scale of the good ones, given or found (engine/RobustFit.h); 0 for squares.
  // Without a solution: the loss for which there is none though there is one by least squares; else squares.
  LossKind Loss = LossKind::Squares;
  double LossScale = 0;
  bool LossScaleGiven = false;
  std::string Failure;  // why the last Fit found no solution, in a sentence; empty for one that was aborted

  double RSS = 0;      // residual sum of squares, unweighted
  double RssNorm = 0;  // the same, weighted
  double RST = 0;      // total sum of squares about the mean, weighted
  std::int32_t DOFError = 0, DOFRegression = 0;
  double ResAvg = 0, ResSum = 0, Durbin = 0;
  double R2 = 0, R2Adjust = 0, StdErr = 0;
  // The standard deviation of a point of weight 1 where the given ones are taken at their word
  // (Settings::AbsoluteDeviations); 0 where they tell ratios, and StdErr is what the scatter shows for it.
  double GivenDeviation = 0;

  // Root mean squares of the errors at points that were left out, one at a time and in parts
  // (diagnosis/CrossValidation.h): NaN as long as nobody has asked, infinite where there is none.
  double LeaveOneOut = NAN, CrossValidated = NAN;
  int FailedParts = 0;  // parts without an answer

  std::vector<double> CoefficientValues;
  std::vector<double> Variances;  // diagonal of the unscaled covariance
  std::vector<SweepRow> SweepRows;

  DataStatistics Statistics;                                                         // of the input
  std::shared_ptr<const InputPoints> Input = std::make_shared<const InputPoints>();  // shared by copies
};

}  // namespace quorvex
