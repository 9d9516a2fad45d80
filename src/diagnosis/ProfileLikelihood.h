#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "core/Settings.h"
#include "core/SolveData.h"
#include "diagnosis/LimitLevels.h"
#include "engine/SolveForm.h"

namespace quorvex {

class ModelClass;

// By what the rise of the merit function is judged.
struct ProfileScale {
  double Variance = NAN;                                   // of a point of weight 1: StdErr^2, or the given one
  std::array<double, kLimitLevels.size()> Quantiles = {};  // by level, ascending: ConfidenceQuantiles(DOFError), say
};

struct ProfilePoint {
  double Value = NAN;  // at which the coefficient is held
  double Tau = NAN;  // the root of the rise of the merit function in units of the variance, negative below the solution
};

// How the merit function rises while one coefficient is held beside its best value and the others are fitted anew.
struct ProfileCurve {
  std::vector<ProfilePoint> Points;  // ascending in Value, the solution among them with a Tau of 0
  // Why a side has no limit at some level, or one that is not where the merit function has risen enough: a sentence;
  // else empty.
  std::string BelowEnds, AboveEnds;
};

struct CoefficientProfile {
  int Coefficient = 0;  // its number, from 1
  std::string Name;
  double Value = NAN;  // where the merit function is least
  LimitsByLevel Limits;
  ProfileCurve Curve;
};

struct ProfiledModel {
  std::vector<CoefficientProfile> Coefficients;  // the free ones; empty where there are no profiles
  std::string Refusal;                           // why there are none: a sentence; else empty
  bool FoundBetter = false;                      // it is a better solution, which the sentence tells
};

// The limits of the free coefficients by the profile likelihood: held at a value on the limit, and with the others
// fitted anew, the merit function exceeds its least by Variance times the square of the quantile. In a linear model
// these are the symmetric limits; in any other they are what the curve of the model makes of them, and they don't
// depend on how it is written.
//
// The least merit function is searched for at each value from where it was found at the last one, in steps that let Tau
// grow by an eighth of the last quantile at most; a limit is then closed in on by refits to 1e-9 of its distance from
// the solution. A limit is infinite where the merit function stays below its level however far the coefficient goes,
// the bound of the coefficient where it stays below up to there, and the last value with a fit where the model has none
// beyond. The first value is taken where the level is met more than once.
//
// No profiles for a model that is not solved or has no free coefficient, for one solved through a transform of Y, with
// a loss other than squares, and where a better solution than the model's own turns up on the way. Nothing where `form`
// is aborted. The same bits for any number of threads.
//
// Method: D. M. Bates & D. G. Watts, Nonlinear Regression Analysis and Its Applications (Wiley, 1988), chapter 6.
std::optional<ProfiledModel> ProfileCoefficients(const ModelClass& model, const SolveData& data,
                                                 const ProfileScale& scale, const Settings& settings, SolveForm& form);

}  // namespace quorvex
