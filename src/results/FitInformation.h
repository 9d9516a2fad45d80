#pragma once

#include <string>

#include "core/LocaleText.h"
#include "core/Settings.h"
#include "core/SolveData.h"
#include "project/Project.h"
#include "results/TextTable.h"
#include "solve/SolvedList.h"

namespace quorvex {

// How the tables of results write their numbers, by number patterns.
struct NumberPatterns {
  static constexpr int kAllDigits = 15, kWindowDigits = 7;

  std::string Values = "General";
  std::string Residuals = "0.0e+0";
  std::string Probabilities = "0.0####";
  int Digits = kAllDigits;  // of "General" numbers
  // Whether probabilities of which that pattern shows next to nothing are written as 1.2E-17.
  bool SmallProbabilities = false;

  // With every digit of the numbers for which nobody has chosen a pattern, as files and other programs take them.
  NumberPatterns InFull() const;
  // What a window shows: the same where all digits are asked for.
  NumberPatterns Shown() const { return Digits == kAllDigits ? InFull() : *this; }

  // A number by one of the patterns, in the locale's form.
  std::string Text(double value, const std::string& pattern, const LocaleText& locale) const;
  std::string Probability(double p, const LocaleText& locale) const;

  bool operator==(const NumberPatterns&) const = default;
};

// For windows, where few digits are read more easily.
inline NumberPatterns WindowPatterns() { return {.Digits = NumberPatterns::kWindowDigits, .SmallProbabilities = true}; }

// What Fit Information tells besides the solution itself.
struct FitCircumstances {
  std::string ProjectFile;
  std::size_t Observations = 0, MissingPoints = 0;
  SolveLimits Limits{0, 0, 0};        // in force for the solve; the lines about iterations need all three
  bool Weighted = false;              // by standard deviations
  const SolveData* Points = nullptr;  // among which outliers are told
};

// Fit Information: what is known of a solution, row by row, label in the first column and value in the next, with
// tables of the coefficients, their confidence limits, the variance and the search from ranges below, and at the end
// how the search ended where it did not by converging. The settings
// "showsumstats", "showvariance", "show68ci", "show90ci", "show95ci" and "show99ci" leave out blocks. Where
// the data are weighted it says by what, and how errors are scaled; where the standard deviations are taken at their
// word, also how the scatter compares with them (diagnosis/ChiSquare.h); where a loss was used, which, and what the
// numbers mean. Of an interpolation, which has neither coefficients nor statistics, only the head. Numbers are in the
// locale's form.
//
// With se the standard error of a coefficient, df the degrees of freedom of the error (infinite where the standard
// deviations are taken at their word: the normal distribution, that is):
//   t-ratio = value / se,  Prob(t) = betai(df/2, 1/2, df/(df + t^2)),  limits = value -+ se t_p
//   F = MSregression / MSerror,  Prob(F) = betai(dfE/2, dfR/2, dfE/(dfE + dfR F))
// A cell whose number cannot be computed stays empty.
Report FitInformation(const SolvedItem& solution, const FitCircumstances& circumstances, const Settings& settings,
                      const LocaleText& locale, const NumberPatterns& patterns = {});

}  // namespace quorvex
