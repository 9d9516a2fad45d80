#include "results/FitInformation.h"

#include <array>
#include <cmath>

#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "core/SerialDate.h"
#include "core/Version.h"
#include "diagnosis/ChiSquare.h"
#include "engine/RobustFit.h"
#include "functions/InverseTDistribution.h"
#include "functions/ProbabilityBeyond.h"

namespace quorvex {
namespace {

constexpr const char* kDetermination = "0.0#########";

// A confidence level as reports name it, and the setting that shows it.
constexpr struct {
  const char *Percent, *Setting;
} kLevels[] = {{"68%", "show68ci"}, {"90%", "show90ci"}, {"95%", "show95ci"}, {"99%", "show99ci"}};

class Builder {
 public:
  Builder(const Settings& settings, const LocaleText& locale, const NumberPatterns& patterns)
      : settings_(settings), locale_(locale), patterns_(patterns), report_(locale.DecimalSeparator) {}

  void Head(const SolvedItem& solution, const FitCircumstances& circumstances) {
    Line("Quorvex version ", kVersion);
    Line("Results from project ", circumstances.ProjectFile);
    Line("Equation ID: ", solution.Name());
    Line("Model Definition:", solution.Model ? "" : solution.Interpolation->Description);
    if (const ModelClass* model = solution.Model) {
      for (int n = 1; n < model->FunctionCount(); ++n)
        if (!model->FunctionList(n).empty()) Line("F" + std::to_string(n) + " = ", model->FunctionList(n));
      Line("Y = ", model->FunctionList(0));
    }
    Line("Number of observations = ", std::to_string(circumstances.Observations));
    Line("Number of missing observations = ", std::to_string(circumstances.MissingPoints));
    if (solution.Model == nullptr) return;
    const bool absolute = solution.Model->GivenDeviation > 0;
    if (!circumstances.Weighted && !absolute) return;
    Line("Weighted by ", "1/SD^2, divided by its mean");
    Line("Standard errors ", absolute ? "by SD as given, taken at its word, whatever the points scatter"
                                      : "scaled by the standard error of the estimate, so that SD counts by its ratios "
                                        "alone");
  }

  void Solver(const ModelClass& model, const SolveLimits& limits) {
    if (model.SolveType == 1) return Line("Solver type: Linear", "");
    Line("Solver type: Nonlinear", "");
    if (limits.MaxIterations == 0 || limits.DivIterations == 0 || limits.ResidualTolerance == 0) return;
    Line("Nonlinear iteration limit = ", std::to_string(limits.MaxIterations));
    Line("Diverging nonlinear iteration limit =", std::to_string(limits.DivIterations));
    Line("Number of nonlinear iterations performed = ", std::to_string(model.NumIterations));
    Line("Residual tolerance = ", Number(limits.ResidualTolerance, "General"));
  }

  void Loss(ModelClass& model, const SolveData* points) {
    if (model.Loss == LossKind::Squares) return;
    Line("Residuals count as: ", std::string(kLossNames[static_cast<std::size_t>(model.Loss)]));
    Line(model.LossScaleGiven ? "Scale of good residuals, as given = " : "Scale of good residuals, found from them = ",
         Value(model.LossScale));
    if (points != nullptr) {
      const std::string outliers = OutlierText(OutlierRows(model, *points));
      const std::size_t colon = outliers.find(": ");
      Line(outliers.substr(0, colon + 1), outliers.substr(colon + 2));
    }
    Line("Sums and R^2 ", "of all points, outliers included; standard errors are those of the loss");
  }

  void Statistics(const ModelClass& model) {
    if (!Shown("showsumstats")) return;
    Line("Sum of Residuals = ", Value(model.ResSum));
    Line("Average Residual = ", Value(model.ResAvg));
    Line("Residual Sum of Squares (Absolute) = ", Value(model.RSS));
    Line("Residual Sum of Squares (Relative) = ", Value(model.RssNorm));
    Line("Standard Error of the Estimate = ", Value(model.StdErr));
    Line("Coefficient of Multiple Determination (R^2) = ", Number(model.R2, kDetermination));
    Line("Proportion of Variance Explained = ", Number(100 * model.R2, "##0.0#######") + "%");
    Line("Adjusted coefficient of multiple determination (Ra^2) = ", Number(model.R2Adjust, kDetermination));
    Line("Durbin-Watson statistic = ", Value(model.Durbin));
    if (model.GivenDeviation == 0) return;
    const ChiSquare chiSquare = ChiSquareOf(model, model.GivenDeviation);
    Line("Reduced chi-square = ", Value(chiSquare.Reduced));
    Line("Probability of chi-square = ", Probability(chiSquare.Probability));
  }

  void Coefficients(const ModelClass& model) {
    Heading("Regression Variable Results");
    ColumnHeadings({"Variable", "Value", "Standard Error", "t-ratio", "Prob(t)"});
    for (int i = 1; i <= model.NumDependentVar(); ++i) {
      const double se = model.StandardError(i);
      std::vector<std::string> row = {model.Variables(i), Value(model.Values(i)), Value(se), "", ""};
      if (const double t = model.Values(i) / se; std::isfinite(t)) {
        row[3] = Value(t);
        row[4] = Attempt([&] { return Probability(ProbabilityBeyond(t * t, 1, model.ErrorDegrees())); });
      }
      Values(std::move(row));
    }
  }

  void ConfidenceLimits(const ModelClass& model) {
    std::array<double, 4> quantiles;
    try {
      quantiles = ConfidenceQuantiles(model.ErrorDegrees());
    } catch (const NumericFault&) {
      return;
    }
    for (std::size_t level = 0; level < quantiles.size(); ++level) {
      if (!Shown(kLevels[level].Setting)) continue;
      const std::string percent = kLevels[level].Percent;
      Heading(percent + " Confidence Intervals");
      ColumnHeadings({"Variable", "Value", percent + " (+/-)", "Lower Limit", "Upper Limit"});
      for (int i = 1; i <= model.NumDependentVar(); ++i) {
        const double value = model.Values(i), half = model.StandardError(i) * quantiles[level];
        Values({model.Variables(i), Value(value), Value(half), Value(value - half), Value(value + half)});
      }
    }
  }

  void Variance(const ModelClass& model) {
    const std::int32_t dfR = model.DOFRegression, dfE = model.DOFError;
    // A model worse than the mean leaves the regression a negative sum of squares.
    if (!Shown("showvariance") || model.RssNorm > model.RST || dfR == 0 || dfE == 0) return;
    const double regression = model.RST - model.RssNorm;
    const double msR = regression / dfR, msE = model.RssNorm / dfE;
    const double F = msR / msE;
    Heading("Variance Analysis");
    ColumnHeadings({"Source", "DF", "Sum of Squares", "Mean Square", "F Ratio", "Prob(F)"});
    std::vector<std::string> row = {"Regression", std::to_string(dfR), Value(regression), Value(msR), "", ""};
    if (msE == 0) {
      row[4] = "Infinity";
    } else if (std::isfinite(F)) {
      row[4] = Value(F);
      row[5] = Attempt([&] { return Probability(ProbabilityBeyond(F, dfR, dfE)); });
    }
    Values(std::move(row));
    Values({"Error", std::to_string(dfE), Value(model.RssNorm), Value(msE)});
    Values({"Total", std::to_string(std::int64_t{dfR} + dfE), Value(model.RST)});
  }

  // A row per set of initial estimates: start and end of each coefficient, how good the end is, and then the ranges
  // that the starts were taken from. Sets from a project file know of their start alone.
  void Sweep(const ModelClass& model) {
    if (model.SweepCount <= 1) return;
    std::vector<std::string> names, headings;
    for (int i = 1; i <= model.NumDependentVar(); ++i) {
      names.insert(names.end(), {model.Variables(i), ""});
      headings.insert(headings.end(), {"Initial Value", "Fitted Value"});
    }
    names.insert(names.end(), 4, "");
    headings.insert(headings.end(), {"RSS", "R^2", "Ra^2", "Std Err"});
    std::vector<std::string> ranges;
    for (int i = 1; i <= model.NumDependentVar(); ++i) {
      const ICRange& range = model.GetICRange()[static_cast<std::size_t>(i - 1)];
      names.push_back(model.Variables(i));
      headings.emplace_back("Range");
      ranges.push_back(Value(range.Min) + (range.Steps > 1 ? " to " + Value(range.Max) : ""));
    }
    Heading("Initial Condition Range Summary");
    ColumnHeadings(std::move(names));
    ColumnHeadings(std::move(headings));
    for (const SweepRow& set : model.GetSweepInfo()) {
      const bool whole = !set.Final.empty();
      const auto known = [&](double value) { return whole ? Value(value) : std::string(); };
      std::vector<std::string> row;
      for (std::size_t i = 0; i < set.Start.size(); ++i)
        row.insert(row.end(), {Value(set.Start[i]), whole ? Value(set.Final[i]) : ""});
      for (const double statistic : {set.RSS, set.R2, set.R2Adjust, set.StdErr}) row.push_back(known(statistic));
      row.insert(row.end(), ranges.begin(), ranges.end());
      Values(std::move(row));
    }
  }

  void Ending(std::string_view searchEnd) {
    if (searchEnd.empty()) return;
    report_.Add(RowKind::Line, {});
    Line("Search ended:", std::string(searchEnd));
  }

  Report Finish() { return std::move(report_); }

 private:
  bool Shown(const char* setting) const { return settings_.Integer(setting) != 0; }

  std::string Number(double value, const std::string& pattern) const { return patterns_.Text(value, pattern, locale_); }
  std::string Value(double value) const { return Number(value, patterns_.Values); }
  std::string Probability(double value) const { return patterns_.Probability(value, locale_); }

  template <typename Text>
  static std::string Attempt(Text text) {
    try {
      return text();
    } catch (const NumericFault&) {
      return {};
    }
  }

  void Line(std::string label, std::string value) {
    std::vector<std::string> cells = {std::move(label)};
    if (!value.empty()) cells.push_back(std::move(value));
    report_.Add(RowKind::Line, std::move(cells));
  }
  void Heading(std::string text) {
    report_.Add(RowKind::Line, {});
    report_.Add(RowKind::Heading, {std::move(text)});
  }
  void ColumnHeadings(std::vector<std::string> cells) { report_.Add(RowKind::ColumnHeadings, std::move(cells)); }
  void Values(std::vector<std::string> cells) { report_.Add(RowKind::Values, std::move(cells)); }

  const Settings& settings_;
  const LocaleText& locale_;
  const NumberPatterns& patterns_;
  Report report_;
};

}  // namespace

NumberPatterns NumberPatterns::InFull() const {
  const NumberPatterns usual;
  NumberPatterns full = *this;
  full.Digits = kAllDigits;
  if (Residuals == usual.Residuals) full.Residuals = usual.Values;
  if (Probabilities == usual.Probabilities) full.Probabilities = usual.Values;
  return full;
}

std::string NumberPatterns::Text(double value, const std::string& pattern, const LocaleText& locale) const {
  // The points of a date are no decimal ones.
  if (IsDatePattern(pattern)) return FormatDate(value, pattern, locale.DecimalSeparator);
  return LocalizeExpression(FormatNumber(value, pattern, Digits), locale);
}

std::string NumberPatterns::Probability(double p, const LocaleText& locale) const {
  constexpr double kTwoDigits = 1e-4;  // the usual pattern shows at least so many of what is not less
  const bool small = SmallProbabilities && p > 0 && p < kTwoDigits && Probabilities == NumberPatterns().Probabilities;
  return Text(p, small ? "0.0E+00" : Probabilities, locale);
}

Report FitInformation(const SolvedItem& solution, const FitCircumstances& circumstances, const Settings& settings,
                      const LocaleText& locale, const NumberPatterns& patterns) {
  Builder builder(settings, locale, patterns);
  builder.Head(solution, circumstances);
  if (const ModelClass* model = solution.Model) {
    builder.Solver(*model, circumstances.Limits);
    builder.Loss(*solution.Model, circumstances.Points);
    builder.Statistics(*model);
    builder.Coefficients(*model);
    builder.ConfidenceLimits(*model);
    builder.Variance(*model);
    builder.Sweep(*model);
    builder.Ending(solution.SearchEndText());
  }
  return builder.Finish();
}

}  // namespace quorvex
