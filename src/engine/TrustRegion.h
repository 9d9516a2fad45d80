#pragma once

#include <cmath>
#include <functional>
#include <vector>

#include "engine/SolveForm.h"
#include "engine/WeightedResiduals.h"

namespace quorvex {

// How a trust region search goes about it.
struct TrustRegionPlan {
  double FirstRadius = 1;    // of the length of the scaled start
  int Iterations = 200;      // at most: as often are derivatives computed
  double Tolerance = 1e-15;  // converged where both the expected and the actual gain, as parts of the sum, are below
  // Improves a trial, and its residuals with it, before it is judged.
  std::function<bool(std::vector<double>& a, std::vector<double>& r)> Improve = nullptr;
};

struct TrustRegionEnd {
  std::vector<double> a;     // the best; the start where it has no value
  double Length = HUGE_VAL;  // of the residuals there; infinite where the start has no value
  bool Converged = false;
};

// Searches from `a` for the least sum of squares of the residuals. Gives the form its turn at each iteration, and ends
// with the best so far where it is aborted or paused.
//
// Method: J. J. More, "The Levenberg-Marquardt algorithm: implementation and theory" (Lecture Notes in Mathematics 630,
// 1978). The step is held in a ball of the coefficients scaled by the largest lengths that the columns of derivatives
// have had; the ball grows and shrinks by what came of the step beside what the linear form promised. A trial without a
// value, or whose sum overflows, counts as a worse one, and so does a place without derivatives. The derivatives are
// decomposed by QR and singular values, never multiplied with themselves, so that badly scaled and dependent
// coefficients cost no digits. Where coefficients have bounds, one on a bound that the slope pushes against is left out
// of the step, and a step is cut where it would leave them; `a` lies inside.
TrustRegionEnd TrustRegionSearch(WeightedResiduals& residuals, std::vector<double> a, const TrustRegionPlan& plan,
                                 SolveForm& form);

// How well the residuals determine the coefficients at `a`.
struct Determination {
  double ReciprocalCondition = 0;  // of the derivatives, their columns scaled to equal lengths; 0: singular, or none
  // In units of the residuals' variance; empty without derivatives. Where the data leave a combination of coefficients
  // open, those in it have some 1e28 times what each would have by itself.
  std::vector<double> Variances;
};
Determination DeterminationAt(WeightedResiduals& residuals, const std::vector<double>& a);

}  // namespace quorvex
