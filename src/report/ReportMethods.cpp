#include "report/ReportMethods.h"

#include <algorithm>
#include <cmath>

#include "core/Version.h"

namespace quorvex {

std::vector<std::string> MethodsOf(const ModelClass& model, const Diagnosis& diagnosis,
                                   const DiagnosisChoices& choices) {
  const bool nonlinear = model.SolveType == 0;
  const bool huber = model.Loss == LossKind::Huber, bisquare = model.Loss == LossKind::Bisquare;
  const bool profile =
      std::ranges::any_of(diagnosis.Coefficients, [](const auto& one) { return one.Profile.has_value(); });
  const bool bootstrap =
      std::ranges::any_of(diagnosis.Coefficients, [](const auto& one) { return one.Bootstrapped.has_value(); });
  const struct {
    bool IsUsed;
    std::string Text;
  } kMethods[] = {
      {true, std::string("The program: Quorvex ") + kVersion + "."},
      {nonlinear,
       "Nonlinear least squares: K. Levenberg, Quart. Appl. Math. 2 (1944) 164; D. W. Marquardt, J. Soc. Indust. Appl. "
       "Math. 11 (1963) 431."},
      {model.Loss != LossKind::Squares,
       "Robust fit by iteratively reweighted least squares: P. W. Holland & R. E. Welsch, Commun. Statist. A 6 (1977) "
       "813; P. J. Huber, Robust Statistics, Wiley 1981."},
      {huber, "Huber's loss: P. J. Huber, Ann. Math. Statist. 35 (1964) 73."},
      {bisquare, "Bisquare loss: A. E. Beaton & J. W. Tukey, Technometrics 16 (1974) 147."},
      {std::isfinite(model.Durbin),
       "Durbin-Watson statistic: J. Durbin & G. S. Watson, Biometrika 37 (1950) 409 and 38 (1951) 159."},
      {model.NumIndependentVar() == 1,
       "Verdict, runs of residuals of one sign: A. Wald & J. Wolfowitz, Ann. Math. Statist. 11 (1940) 147."},
      {model.Loss == LossKind::Squares,
       "Verdict, points far off by their studentized residuals: R. D. Cook & S. Weisberg, Residuals and Influence in "
       "Regression, Chapman & Hall 1982."},
      {std::isfinite(diagnosis.Rank.AICc),
       "AICc: H. Akaike, IEEE Trans. Autom. Control 19 (1974) 716; C. M. Hurvich & C.-L. Tsai, Biometrika 76 (1989) "
       "297. Akaike weights: K. P. Burnham & D. R. Anderson, Model Selection and Multimodel Inference, 2nd ed., "
       "Springer 2002."},
      {std::isfinite(diagnosis.Rank.BIC), "BIC: G. Schwarz, Ann. Statist. 6 (1978) 461."},
      {std::isfinite(diagnosis.Rank.LeaveOneOut), "Leave-one-out error: D. M. Allen, Technometrics 16 (1974) 125."},
      {choices.CrossValidation > 0, "Cross-validation by parts: S. Geisser, J. Am. Statist. Assoc. 70 (1975) 320."},
      {profile,
       "Limits by the profile likelihood: D. M. Bates & D. G. Watts, Nonlinear Regression Analysis and Its "
       "Applications, Wiley 1988."},
      {bootstrap,
       "Limits by the bootstrap: B. Efron, Ann. Statist. 7 (1979) 1; B. Efron & R. J. Tibshirani, An Introduction to "
       "the Bootstrap, Chapman & Hall 1993."},
  };
  std::vector<std::string> used;
  for (const auto& method : kMethods)
    if (method.IsUsed) used.push_back(method.Text);
  return used;
}

}  // namespace quorvex
