#include "selection/SelectionReport.h"

#include <cmath>

#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "core/Version.h"
#include "functions/ProbabilityBeyond.h"

namespace quorvex {
namespace {

constexpr const char* kInfinity = "Infinity";

class Writer {
 public:
  Writer(Report& report, const SelectionData& data, const LocaleText& locale, const SelectionFormat& format)
      : report_(report), data_(data), locale_(locale), format_(format) {}

  void Step(const SelectionStep& step) {
    const SubsetFit& fit = step.Fit;
    Line({});
    if (!step.Heading.empty()) report_.Add(RowKind::Heading, {step.Heading});
    const std::string r2 = "R2 = " + Value(fit.R2);
    Line(r2 + "  " + (std::isfinite(fit.Cp) ? "Cp = " + Value(fit.Cp) : "Cp not calculated"));
    Variance(fit);
    Coefficients(fit);
  }

  void Subsets(const std::vector<RankedSubset>& subsets) {
    Title("All Subsets Results");
    Headings({"Index", "Var Count", "R2", "RSS", "Std. Error", "Cp", "Variables"});
    std::size_t index = 0;
    for (const RankedSubset& subset : subsets) {
      std::string names;
      for (const std::size_t variable : subset.Variables) names += (names.empty() ? "" : ", ") + data_.Names[variable];
      const SubsetSolver::Quality& q = subset.Quality;
      report_.Add(RowKind::Remarked, {std::to_string(++index), std::to_string(subset.Variables.size()), Value(q.R2),
                                      Sum(q.RSS), Sum(q.StdErr), std::isfinite(q.Cp) ? Value(q.Cp) : "", names});
    }
  }

  void Correlation(const std::vector<std::vector<double>>& correlation) {
    Title("Correlation matrix");
    std::vector<std::string> names = data_.Names;
    names.emplace_back("Y");
    std::vector<std::string> row = {""};
    row.insert(row.end(), names.begin(), names.end());
    Headings(std::move(row));
    for (std::size_t i = 0; i < names.size(); ++i) {
      row = {names[i]};
      for (const double r : correlation[i]) row.push_back(Value(r));
      Values(std::move(row));
    }
  }

  void Inflation(const std::vector<double>& r2OnOthers) {
    Title("Variance Inflation Factors");
    Headings({"Variable", "R2", "VIF"});
    for (std::size_t j = 0; j < r2OnOthers.size(); ++j) {
      const double r2 = r2OnOthers[j];
      std::vector<std::string> row = {data_.Names[j], Value(r2), r2 == 1 ? kInfinity : Value(1 / (1 - r2))};
      if (r2 < 0.75) {
        Values(std::move(row));
        continue;
      }
      row.emplace_back(r2 > 0.9 ? "** VIF indicates a high degree of multicollinearity **"
                                : "** VIF indicates a moderate degree of multicollinearity **");
      report_.Add(RowKind::Remarked, std::move(row));
    }
  }

  void Lines(const std::vector<std::string>& lines) {
    if (!lines.empty()) Line({});
    for (const std::string& line : lines) Line(line);
  }

 private:
  // "Infinity" for a ratio to an error of 0. A regression without a term has neither mean nor ratio.
  void Variance(const SubsetFit& fit) {
    Headings({"", "DF", "Sum of Squares", "Mean Square", "F Ratio", "Prob(F)"});
    const auto dfR = static_cast<double>(fit.DOFRegression), dfE = static_cast<double>(fit.DOFError);
    const double regression = fit.Total * fit.R2, meanError = fit.RSS / dfE;
    std::vector<std::string> row = {"Regression", std::to_string(fit.DOFRegression), Sum(regression)};
    if (fit.DOFRegression > 0) {
      row.push_back(Sum(regression / dfR));
      const double F = fit.R2 / dfR / ((1 - fit.R2) / dfE);
      if (fit.RSS == 0 || !std::isfinite(F))
        row.emplace_back(kInfinity);
      else
        row.insert(row.end(), {Value(F), ProbabilityOf(F, dfR, dfE)});
    }
    Values(std::move(row));
    Values({"Error", std::to_string(fit.DOFError), Sum(fit.RSS), Sum(meanError)});
    Values({"Total", std::to_string(fit.DOFRegression + fit.DOFError), Sum(fit.Total)});
  }

  void Coefficients(const SubsetFit& fit) {
    Headings({"Variable", "Value", "Standard Error", "t-ratio", "Prob(t)"});
    const auto add = [&](const std::string& name, const SubsetCoefficient& coefficient) {
      std::vector<std::string> row = {name, Value(coefficient.Value), Value(coefficient.StandardError)};
      if (std::isfinite(coefficient.t)) row.insert(row.end(), {Value(coefficient.t), Probability(coefficient.p)});
      Values(std::move(row));
    };
    if (fit.Intercept) add("Intercept", *fit.Intercept);
    for (std::size_t j = 0; j < fit.Variables.size(); ++j) add(data_.Names[fit.Variables[j]], fit.Coefficients[j]);
  }

  std::string ProbabilityOf(double F, double dfR, double dfE) const {
    try {
      return Probability(ProbabilityBeyond(F, dfR, dfE));
    } catch (const NumericFault&) {
      return {};
    }
  }

  std::string Probability(double p) const { return patterns_.Probability(p, locale_); }
  std::string Value(double value) const { return patterns_.Text(value, format_.Values, locale_); }
  std::string Sum(double value) const { return patterns_.Text(value, format_.Sums, locale_); }

  void Line(std::string text) { report_.Add(RowKind::Line, {std::move(text)}); }
  void Title(std::string text) {
    Line({});
    report_.Add(RowKind::Heading, {std::move(text)});
  }
  void Headings(std::vector<std::string> cells) { report_.Add(RowKind::ColumnHeadings, std::move(cells)); }
  void Values(std::vector<std::string> cells) { report_.Add(RowKind::Values, std::move(cells)); }

  Report& report_;
  const SelectionData& data_;
  const LocaleText& locale_;
  const SelectionFormat& format_;
  const NumberPatterns patterns_{.Digits = format_.InWindow ? format_.WindowDigits : NumberPatterns::kAllDigits,
                                 .SmallProbabilities = format_.InWindow};
};

}  // namespace

// English, whatever the C library's locale is, as all of the report.
std::string ReportDate(const std::tm& moment) {
  constexpr const char* kDays[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
  constexpr const char* kMonths[] = {"January", "February", "March",     "April",   "May",      "June",
                                     "July",    "August",   "September", "October", "November", "December"};
  const auto two = [](int number) { return (number < 10 ? "0" : "") + std::to_string(number); };
  const int hour = moment.tm_hour % 12 == 0 ? 12 : moment.tm_hour % 12;
  return two(hour) + ":" + two(moment.tm_min) + (moment.tm_hour < 12 ? " AM " : " PM ") + kDays[moment.tm_wday] + ", " +
         kMonths[moment.tm_mon] + " " + two(moment.tm_mday) + ", " + std::to_string(1900 + moment.tm_year);
}

void AddReportHead(Report& report, SelectionProcedure procedure, const std::tm& moment) {
  report.Add(RowKind::Line, {ReportDate(moment)});
  report.Add(RowKind::Line, {std::string("Quorvex version ") + kVersion});
  report.Add(RowKind::Heading, {std::string(kProcedureNames[static_cast<std::size_t>(procedure)]) + " Procedure"});
}

void AddStep(Report& report, const SelectionStep& step, const SelectionData& data, const LocaleText& locale,
             const SelectionFormat& format) {
  Writer(report, data, locale, format).Step(step);
}

SelectionReport ReportOf(const SelectionResult& result, const SelectionData& data, SelectionProcedure procedure,
                         const std::tm& moment, const LocaleText& locale, const SelectionFormat& format) {
  SelectionReport report{Report(locale.DecimalSeparator)};
  AddReportHead(report.Table, procedure, moment);
  Writer writer(report.Table, data, locale, format);
  for (const SelectionStep& step : result.Steps) writer.Step(step);
  if (!result.Subsets.empty()) {
    writer.Subsets(result.Subsets);
    report.FirstSubset = report.Table.RowCount() - result.Subsets.size();
  }
  writer.Lines(result.Endings);
  if (result.Error) writer.Lines({*result.Error});
  if (!result.Correlation.empty()) writer.Correlation(result.Correlation);
  if (!result.CorrelationError.empty()) writer.Lines({result.CorrelationError});
  if (!result.R2OnOthers.empty()) writer.Inflation(result.R2OnOthers);
  if (!result.VifError.empty()) writer.Lines({result.VifError});
  return report;
}

}  // namespace quorvex
