#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Settings.h"
#include "diagnosis/Diagnosis.h"
#include "diagnosis/DiagnosisChoices.h"
#include "results/FitInformation.h"
#include "results/TextTable.h"

namespace quorvex {

// What a diagnosis report tells besides the diagnosis itself.
struct DiagnosisCircumstances {
  DiagnosisChoices Choices;           // that the diagnosis was made with
  std::vector<std::string> Warnings;  // of all models together
};

// "This answer can be trusted.", "Look twice: " or "No answer: " with the gravest reason.
std::string Headline(const Verdict& verdict);

// Whether to trust the answer `all[which]`, row by row, the verdict first; then how it stands among `all`, which are in
// their order of rank, its coefficients and quantities with their limits, a table for each level that the settings
// "show68ci", "show90ci", "show95ci" and "show99ci" show, correlations and outliers. What was not computed has no rows;
// a cell whose number cannot be computed stays empty, and a limit that is not there is "none". Numbers are in the
// locale's form.
Report DiagnosisReport(const std::vector<Diagnosis>& all, std::size_t which,
                       const DiagnosisCircumstances& circumstances, const Settings& settings, const LocaleText& locale,
                       const NumberPatterns& patterns = {});

}  // namespace quorvex
