#pragma once

#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Result.h"
#include "core/Settings.h"
#include "diagnosis/Diagnosis.h"
#include "project/Project.h"
#include "report/FitReport.h"
#include "results/DiagnosisReport.h"
#include "solve/SolvedList.h"

namespace quorvex {

// What a report is made of.
struct ReportSource {
  ModelClass& Model;  // solved
  const DataSheet& Sheet;
  std::string DataName;  // where the points are from, as the user knows it
  std::string Date;
  LocaleText Locale;  // in whose form the sheet's, the diagnoses' and the report's numbers are
  SolveLimits Limits{0, 0, 0};
  const std::vector<Diagnosis>& Diagnoses;  // of all models; the model's own is number Which, from 0
  std::size_t Which = 0;
  DiagnosisCircumstances Circumstances;
  std::string Macro, MacroNote;  // which makes the same report again, and what is to be known of it
};

// The whole report but for its pictures, whose Svg is empty. It shows 95 % limits, and blocks of statistics by the
// preferences.
FitReport DescribeFit(const ReportSource& source, const Settings& settings);

// A plot that a report shows, as the text of its file, in the order of the report's pictures; or why there is none.
struct ReportPlot {
  std::string Text, WhyNot;
};
std::vector<ReportPlot> PlotsOfReport(const ReportSource& source, Settings& settings);

// Puts the picture of that number, from 0, into the report, an SVG document of the plot, or why there is none.
void PlacePicture(FitReport& report, std::size_t number, const ReportPlot& plot, const Result<std::string>& svg);

}  // namespace quorvex
