#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/Settings.h"
#include "core/SolveData.h"
#include "diagnosis/FitGeometry.h"
#include "engine/ModelCollection.h"
#include "engine/SolveForm.h"

namespace quorvex {

// How far a model is off at points that it was not fitted to: the root of the mean of w (y - f)^2, in the unit of Y,
// with the weights of the fit (mean 1), f being what a fit without the point predicts.

// Each point left out in turn, by the leverages h of the solution instead of refits: y - f = e / (1 - h). Exact for
// models that are linear in their coefficients; for others what the tangent at the solution tells, which is good as
// long as a single point doesn't move the coefficients far. Infinite where a point alone determines a coefficient (h =
// 1) or the model has no derivatives. (D. M. Allen, Technometrics 16, 1974.)
double LeaveOneOutError(ModelClass& model, const SolveData& data, const FitGeometry& geometry,
                        DerivativeKind derivativeMethod, SolveForm& form, int threads = 1);

// The points, from 0, in `parts` of sizes that differ by at most 1: shuffled by the seed, then dealt out in turn. As
// many parts as points where more are asked for; none for less than 2 parts. The same for all models.
std::vector<std::vector<std::size_t>> CrossValidationParts(std::size_t points, int parts, std::uint64_t seed);

struct PartsError {
  double Error = NAN;   // infinite where a part has no answer: what is missing may be the worst
  int FailedParts = 0;  // whose fit failed or has no value at a point left out
};

// Each part left out in turn, and the model fitted to the others, beginning at its solution, by the ordinary search.
// The model stays as it is. Where `form` is aborted, its user has NaN.
PartsError CrossValidatedError(const ModelClass& model, const SolveData& data, int parts, std::uint64_t seed,
                               const Settings& settings, SolveForm& form);

// Gives every solved model its LeaveOneOut and, with at least 2 parts, its CrossValidated, as far as it doesn't know
// them since its last fit: whoever wants other parts asks a copy that hasn't been asked yet. A model that was fitted to
// other data than these stays without. Models and parts are fitted side by side, on as many threads as the settings
// allow, with the same numbers for any. False where `form` is aborted.
bool CrossValidate(const ModelCollection& models, const SolveData& data, int parts, std::uint64_t seed,
                   const Settings& settings, SolveForm& form);

}  // namespace quorvex
