#pragma once

#include <cstddef>
#include <ctime>
#include <string>

#include "core/LocaleText.h"
#include "results/FitInformation.h"
#include "results/TextTable.h"
#include "selection/ExecuteSelection.h"

namespace quorvex {

// How reports of a search write their numbers, by number patterns. Counts and probabilities have forms of their own.
struct SelectionFormat {
  std::string Values = "0.0####";                    // coefficients and what is said of them, R2, Cp, correlations
  std::string Sums = "General";                      // sums of squares and what is in their unit
  int WindowDigits = NumberPatterns::kWindowDigits;  // of "General" numbers in a window, which has small probabilities
  bool InWindow = false;                             // as they are, too; else all digits and the usual pattern
};

inline SelectionFormat ForWindow(SelectionFormat format) {
  format.InWindow = true;
  return format;
}

// The rows that a report has room for, those of a sheet.
inline constexpr std::size_t kMostReportRows = 65'536;

// The moment as the head of a report has it, "03:05 PM Sunday, November 22, 2026".
std::string ReportDate(const std::tm& moment);

// The head of a report: date, version and the procedure's name.
void AddReportHead(Report& report, SelectionProcedure procedure, const std::tm& moment);

// One model: its heading, where it has one, R2 and Cp, the analysis of variance and the coefficients.
void AddStep(Report& report, const SelectionStep& step, const SelectionData& data, const LocaleText& locale,
             const SelectionFormat& format);

// The whole report of a search.
struct SelectionReport {
  Report Table;
  std::size_t FirstSubset = 0;  // the row of the best combination, where All Subsets found any
};
SelectionReport ReportOf(const SelectionResult& result, const SelectionData& data, SelectionProcedure procedure,
                         const std::tm& moment, const LocaleText& locale, const SelectionFormat& format = {});

}  // namespace quorvex
