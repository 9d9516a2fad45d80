#pragma once

#include <string>

#include "core/LocaleText.h"
#include "core/Settings.h"
#include "project/Project.h"
#include "results/TextTable.h"
#include "solve/SolvedList.h"

namespace quorvex {

// How the tables of results write their numbers, by number patterns.
struct NumberPatterns {
  std::string Values = "General";
  std::string Residuals = "0.0e+0";

  bool operator==(const NumberPatterns&) const = default;
};

// What Fit Information tells besides the solution itself.
struct FitCircumstances {
  std::string ProjectFile;
  std::size_t Observations = 0, MissingPoints = 0;
  SolveLimits Limits{0, 0, 0};  // in force for the solve; the lines about iterations need all three
};

// Fit Information: what is known of a solution, row by row, label in the first column and value in the next, with
// tables of the coefficients, their confidence limits, the variance and the search from ranges below, and at the end
// how the search ended where it did not by converging. The settings
// "showsumstats", "showvariance", "show68ci", "show90ci", "show95ci" and "show99ci" leave out blocks. Of an
// interpolation, which has neither coefficients nor statistics, only the head. Numbers are in the locale's form.
//
// With se the standard error of a coefficient, df the degrees of freedom of the error:
//   t-ratio = value / se,  Prob(t) = betai(df/2, 1/2, df/(df + t^2)),  limits = value -+ se t_p
//   F = MSregression / MSerror,  Prob(F) = betai(dfE/2, dfR/2, dfE/(dfE + dfR F))
// A cell whose number cannot be computed stays empty.
Report FitInformation(const SolvedItem& solution, const FitCircumstances& circumstances, const Settings& settings,
                      const LocaleText& locale, const NumberPatterns& patterns = {});

}  // namespace quorvex
