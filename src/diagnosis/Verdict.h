#pragma once

#include <string>
#include <vector>

#include "core/Settings.h"
#include "core/SolveData.h"
#include "diagnosis/FitGeometry.h"
#include "diagnosis/LimitLevels.h"
#include "diagnosis/ProfileLikelihood.h"
#include "engine/ModelClass.h"
#include "engine/SolveForm.h"

namespace quorvex {

// Whether an answer is to be trusted.
enum class VerdictKind { Sound, Doubtful, Failed };
struct Verdict {
  VerdictKind Kind = VerdictKind::Sound;
  std::string Ended;                    // how the search ended, a sentence
  std::vector<std::string> Reasons;     // what speaks against it, a sentence each, the gravest first
  std::vector<std::string> Notes = {};  // what is worth knowing and speaks against nothing, a sentence each
};

// The verdict on a model that was fitted to these points, with its geometry where it has one. Failed where it isn't
// solved, its reason being why (WhyFailed.h); Doubtful with any reason, else Sound. The reasons, in this order:
//
//   not converged      the search was stopped by its limit or by the user
//   on a bound         a coefficient lies on its minimum or maximum: the data would have it beyond, and the errors of
//                      the others hold for that value alone
//   no derivatives     the model has none at some point, so that nothing is known of errors
//   not determined     the condition of the derivatives, their columns scaled to equal lengths, is above 1e10: the
//                      coefficients named, with more than a tenth of the largest part in the weakest direction, can
//                      change together and leave the curve as it is (numerical derivatives are right to ten digits);
//                      from 1e6 on, too, where the standard errors of all of them are above 1000 times their values
//   not at a minimum   the sum of squares still falls: the relative offset (FitGeometry) is above 0.05, that is, the
//                      coefficients are off by a twentieth of what the data leave open. Nonlinear least squares alone
//   no better than a constant   the scatter about the curve, per degree of freedom, is as large as about the mean of Y.
//                      Least squares alone
//   broken             the curve has a pole, a jump or no value between points (ModelBreaks.h)
//   beyond deviations  the standard deviations are taken at their word, and by the reduced chi-square the points
//                      scatter so much more, or so much less, that chance would do it in less than one of 1000 fits
//                      (ChiSquare.h). Least squares alone: points that a loss plays down are meant to be far off
//   too few points     less than 3 degrees of freedom are left: the 95 % limits are 4 to 13 standard errors wide
//   alone              points with a leverage above 0.9, fewer of them than coefficients: each decides one by itself
//   far off            points, of a leverage up to a half, whose externally studentized residual chance would make that
//                      large in less than one of 1000 such fits, by Bonferroni's bound (R. D. Cook & S. Weisberg,
//                      Residuals and Influence in Regression, 1982, section 2.2). Least squares alone
//   correlated         the coefficients of the pair named have a correlation beyond 0.99, and one of them a standard
//                      error above a fifth of its value: what one has too much the other makes up for. With small
//                      errors even a correlation of 0.999 does no harm, and many good models have one
//   not random         with one variable and 7 different X at least, neighbouring residuals (means of equal X) are
//                      alike so often that chance would do it in one of 1000 fits, by von Neumann's ratio, which is
//                      Durbin and Watson's, with less than 12 X by their beta approximation, or by the number of runs
//                      of one sign (J. von Neumann, Ann. Math. Statist. 12, 1941; J. Durbin & G. S. Watson, Biometrika
//                      38, 1951; A. Wald & J. Wolfowitz, Ann. Math. Statist. 11, 1940): the model misses something
//   lack of fit        with any number of variables and points repeated at the same X, the means of these are farther
//                      off the curve than their scatter allows but in one of 1000 fits, by the F test of lack of fit
//                      against pure error (R. A. Fisher, J. R. Statist. Soc. 85, 1922). Least squares alone
//
// The notes, which turn no verdict, since a good model may have such a coefficient, and weights needn't be deviations:
//
//   may be 0           a standard error is larger than its coefficient: by the t-test nothing speaks against 0
//   beyond ratios      as beyond deviations, where only the ratios of the standard deviations count
//
// Residuals that are no more than the rounding of Y, 1e-10 of its size, tell nothing and are not judged. Numbers in the
// sentences are in the form of the locale. The model stays as it was.
Verdict Judge(ModelClass& model, const SolveData& data, const std::optional<FitGeometry>& geometry,
              const Settings& settings, SolveForm& form, const LocaleText& locale = {});

// What profiles add to the verdict on a solved model, whose symmetric limits these are, one for each coefficient:
//
//   not the best       they have led to a better solution; the first of all reasons
//   open               at 95 % there is no limit on a side: the data exclude no value there
//   lopsided           an end of the 95 % limits is off the symmetric one by more than a quarter of the distance
//                      between the two symmetric ones; from a tenth on a note. Not of coefficients on a bound, of
//                      which the verdict has spoken
void JudgeByProfiles(const ModelClass& model, const ProfiledModel& profiled,
                     const std::vector<LimitsByLevel>& symmetric, Verdict& verdict);

// What the samples of a bootstrap add: a reason where more than one of 20 had no answer, since those that are left are
// then no fair picture.
void JudgeBySamples(int samples, int failures, Verdict& verdict);

// Adds the sentences that another verdict on the same answer has beyond this one, each at its place.
void TakeOver(const Verdict& further, Verdict& verdict);

}  // namespace quorvex
