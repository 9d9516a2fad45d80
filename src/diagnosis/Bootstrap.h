#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "core/Settings.h"
#include "core/SolveData.h"
#include "diagnosis/LimitLevels.h"
#include "engine/SolveForm.h"

namespace quorvex {

class ModelClass;

struct BootstrapPlan {
  int Samples = 1000;
  bool ResampleCases = false;  // whole points; else the residuals
  std::uint64_t Seed = 20240229;
};

// Quantities of all coefficients, in an order of the caller's; NaN for one without a value.
using QuantitiesOf = std::function<std::vector<double>(std::span<const double> coefficients)>;

// What the samples tell of a coefficient or quantity. NaN where fewer than two have a value.
struct BootstrapSpread {
  LimitsByLevel Limits;
  double Bias = NAN;    // mean of the samples less the value of the solution
  double StdErr = NAN;  // standard deviation of the samples
};

struct Bootstrapped {
  std::vector<std::vector<double>> Samples;  // all coefficients of each sample that has an answer, in their order
  int Failures = 0;                          // samples without one
  std::vector<BootstrapSpread> Coefficients, Quantities;
};

// Fits the model to `plan.Samples` other data of the same size, made of its own, and takes the limits from what comes
// of it: at each level the quantiles of the fitted values that leave equal parts on both sides (the percentile
// interval).
//
// Of residuals: the fitted values plus residuals drawn with replacement, centred, times root(n / DOFError) for what the
// coefficients have taken of them, and over the root of the weight of the point that they come to. Of cases: points
// drawn with replacement. Each fit is that of the program, from the solution on and without TryHarder, on a twin of the
// model; one that fails or doesn't converge is counted and left out. Sample k depends on the seed, on k and on nothing
// else: the same bits for any number of threads, and the first samples of a longer run are those of a shorter one.
//
// Nothing where `form` is aborted; no samples for a model that is not solved or has no value at some point.
//
// Method: B. Efron & R. J. Tibshirani, An Introduction to the Bootstrap (Chapman & Hall, 1993), chapters 9 and 13;
// quantiles of type 7 of R. J. Hyndman & Y. Fan, Am. Statistician 50, 1996.
std::optional<Bootstrapped> BootstrapModel(const ModelClass& model, const SolveData& data, const BootstrapPlan& plan,
                                           const Settings& settings, SolveForm& form,
                                           const QuantitiesOf& quantities = nullptr);

// The quantile of ascending values (at least one) that a part p lies below: by straight lines between the values, the
// least at p = 0 and the greatest at p = 1 (type 7 of Hyndman & Fan).
double QuantileOf(std::span<const double> ascending, double p);

}  // namespace quorvex
