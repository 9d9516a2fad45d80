#include "results/DiagnosisReport.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "diagnosis/ProfileRemarks.h"

namespace quorvex {
namespace {

constexpr std::size_t kMostRivals = 20;  // models of a group that are listed

class Builder {
 public:
  Builder(const Settings& settings, const LocaleText& locale, const NumberPatterns& patterns)
      : settings_(settings), locale_(locale), patterns_(patterns), report_(locale.DecimalSeparator) {}

  void Judgement(const Diagnosis& diagnosis) {
    constexpr const char* kKinds[] = {"This answer can be trusted.", "Look twice.", "No answer."};
    report_.Add(RowKind::Heading, {kKinds[static_cast<std::size_t>(diagnosis.Judgement.Kind)]});
    for (const std::string& reason : diagnosis.Judgement.Reasons) Line("Reason: ", reason);
    for (const std::string& note : diagnosis.Judgement.Notes) Line("Note: ", note);
    Line("Search: ", diagnosis.Judgement.Ended);
    Line("Equation ID: ", diagnosis.Id);
  }

  void Warnings(const std::vector<std::string>& warnings) {
    for (const std::string& warning : warnings) Line("Warning: ", warning);
  }

  void Errors(const Diagnosis& diagnosis) {
    Line("Standard errors: ", diagnosis.AbsoluteDeviations ? "from the given standard deviations, taken at their word"
                                                           : "from the scatter of the points about the curve");
    NumberLine("Reduced chi-square = ", diagnosis.ReducedChiSquare);
    if (!std::isnan(diagnosis.ChiSquareProbability))
      Line("Probability of a larger chi-square = ", patterns_.Probability(diagnosis.ChiSquareProbability, locale_));
    NumberLine("Condition of the derivatives = ", diagnosis.Condition);
  }

  void Rank(const std::vector<Diagnosis>& all, std::size_t which, const DiagnosisChoices& choices) {
    const Ranking& rank = all[which].Rank;
    NumberLine("AICc = ", rank.AICc);
    NumberLine("AICc above the best model's = ", rank.DeltaAICc);
    NumberLine("Akaike weight = ", rank.AkaikeWeight);
    NumberLine("BIC = ", rank.BIC);
    NumberLine("Leave-one-out error = ", rank.LeaveOneOut);
    if (choices.CrossValidation > 0) {
      NumberLine("Cross-validated error, " + std::to_string(choices.CrossValidation) + " parts = ",
                 rank.CrossValidated);
      if (rank.FailedParts > 0) Line("Parts without an answer = ", std::to_string(rank.FailedParts));
    }
    if (rank.SameAs > 0 && static_cast<std::size_t>(rank.SameAs) <= all.size())
      Line("The same curve as ", all[static_cast<std::size_t>(rank.SameAs) - 1].Id);
    Rivals(all, which);
  }

  void Coefficients(const Diagnosis& diagnosis) {
    if (diagnosis.Coefficients.empty()) return;
    Heading("Coefficients");
    ColumnHeadings({"Variable", "Value", "Standard Error", "State"});
    for (const CoefficientDiagnosis& one : diagnosis.Coefficients)
      report_.Add(RowKind::Remarked, {one.Name, Value(one.Value), Value(one.StdErr), StateOf(one)});
  }

  void Quantities(const Diagnosis& diagnosis) {
    if (diagnosis.Quantities.empty()) return;
    Heading("Reported Quantities");
    ColumnHeadings({"Quantity", "Value", "Standard Error", "Expression"});
    for (const QuantityDiagnosis& one : diagnosis.Quantities)
      report_.Add(RowKind::Remarked, {one.Name, Value(one.Value), Value(one.StdErr),
                                      one.Fault.empty() ? one.Expression : one.Expression + ": " + one.Fault});
  }

  void Limits(const Diagnosis& diagnosis, const DiagnosisChoices& choices) {
    bool profile = false, bootstrap = false;
    for (const CoefficientDiagnosis& one : diagnosis.Coefficients) {
      profile = profile || one.Profile;
      bootstrap = bootstrap || one.Bootstrapped;
    }
    for (std::size_t level = 0; level < kLimitLevels.size(); ++level) {
      const std::string percent = std::to_string(kLimitLevels[level]);
      if (settings_.Integer("show" + percent + "ci") == 0 || diagnosis.Coefficients.empty()) continue;
      Heading(percent + "% Limits");
      std::vector<std::string> headings = {"Variable", "Value", "Lower", "Upper"};
      if (profile) headings.insert(headings.end(), {"Profile Lower", "Profile Upper"});
      if (bootstrap) headings.insert(headings.end(), {"Bootstrap Lower", "Bootstrap Upper"});
      ColumnHeadings(std::move(headings));
      const auto row = [&](const auto& one, const std::optional<LimitsByLevel>& byProfile) {
        std::vector<std::string> cells = {one.Name, Value(one.Value)};
        AddLimits(cells, one.Symmetric[level]);
        if (profile) AddLimits(cells, byProfile ? (*byProfile)[level] : Interval());
        if (bootstrap) AddLimits(cells, one.Bootstrapped ? one.Bootstrapped->Limits[level] : Interval());
        report_.Add(RowKind::Values, std::move(cells));
      };
      for (const CoefficientDiagnosis& one : diagnosis.Coefficients)
        if (!one.IsHeld) row(one, one.Profile);
      for (const QuantityDiagnosis& one : diagnosis.Quantities)
        if (one.Fault.empty()) row(one, std::nullopt);
    }
    if (bootstrap) Spread(diagnosis);
    if (profile || bootstrap) Remarks(diagnosis, bootstrap ? &choices : nullptr);
  }

  void Correlations(const Diagnosis& diagnosis) {
    const std::vector<std::string>& names = diagnosis.CorrelationNames;
    if (names.size() < 2) return;
    Heading("Correlations");
    std::vector<std::string> headings = {"Variable"};
    headings.insert(headings.end(), names.begin(), names.end());
    ColumnHeadings(std::move(headings));
    for (std::size_t i = 0; i < names.size(); ++i) {
      std::vector<std::string> cells = {names[i]};
      for (std::size_t j = 0; j < names.size(); ++j) cells.push_back(Value(diagnosis.Correlation(i, j)));
      report_.Add(RowKind::Values, std::move(cells));
    }
  }

  void Outliers(const Diagnosis& diagnosis) {
    if (diagnosis.Outliers.empty()) return;
    std::string list;
    for (const std::size_t row : diagnosis.Outliers) list += (list.empty() ? "" : ", ") + std::to_string(row);
    Heading("Outliers");
    Line("Rows with less than half their weight: ", list);
  }

  Report Finish() { return std::move(report_); }

 private:
  // The models that the data cannot tell apart from this one, itself among them.
  void Rivals(const std::vector<Diagnosis>& all, std::size_t which) {
    const int group = all[which].Rank.Group;
    std::vector<std::size_t> rivals;
    for (std::size_t i = 0; i < all.size(); ++i)
      if (group > 0 && all[i].Rank.Group == group) rivals.push_back(i);
    if (rivals.size() < 2) return;
    Heading("Models That These Data Cannot Tell Apart");
    ColumnHeadings({"Rank", "AICc", "Above the Best", "Akaike Weight", "Equation ID"});
    const std::size_t listed = std::min(rivals.size(), kMostRivals);
    for (std::size_t i = 0; i < listed; ++i) {
      const Diagnosis& one = all[rivals[i]];
      report_.Add(RowKind::Remarked, {std::to_string(rivals[i] + 1), Value(one.Rank.AICc), Value(one.Rank.DeltaAICc),
                                      Value(one.Rank.AkaikeWeight), one.Id});
    }
    if (listed < rivals.size()) Line("and more: ", std::to_string(rivals.size() - listed));
  }

  // What the samples of the bootstrap tell besides their limits.
  void Spread(const Diagnosis& diagnosis) {
    Heading("Bootstrap");
    ColumnHeadings({"Variable", "Bias", "Standard Error"});
    const auto row = [this](const auto& one) {
      if (one.Bootstrapped)
        report_.Add(RowKind::Values, {one.Name, Value(one.Bootstrapped->Bias), Value(one.Bootstrapped->StdErr)});
    };
    std::ranges::for_each(diagnosis.Coefficients, row);
    std::ranges::for_each(diagnosis.Quantities, row);
  }

  // How the limits came about.
  void Remarks(const Diagnosis& diagnosis, const DiagnosisChoices* bootstrap) {
    report_.Add(RowKind::Line, {});
    for (const CoefficientDiagnosis& one : diagnosis.Coefficients)
      for (const std::string& remark : ProfileRemarks(one)) Line("Profile of " + one.Name + ": ", remark);
    if (bootstrap == nullptr) return;
    std::string samples =
        std::to_string(bootstrap->Bootstrap) + " samples of the " + (bootstrap->ResampleCases ? "points" : "residuals");
    if (diagnosis.BootstrapFailures > 0)
      samples += ", " + std::to_string(diagnosis.BootstrapFailures) + " of them without an answer";
    Line("Bootstrap: ", samples);
  }

  static std::string StateOf(const CoefficientDiagnosis& one) {
    return one.IsHeld ? "held" : one.IsAtMinimum ? "at its minimum" : one.IsAtMaximum ? "at its maximum" : "free";
  }

  std::string Value(double value) const {
    if (std::isnan(value)) return {};
    return std::isinf(value) ? "infinite" : patterns_.Text(value, patterns_.Values, locale_);
  }
  void AddLimits(std::vector<std::string>& cells, const Interval& limits) const {
    for (const double end : {limits.Lower, limits.Upper}) cells.push_back(std::isinf(end) ? "none" : Value(end));
  }

  void Line(std::string label, std::string value) {
    if (!value.empty()) report_.Add(RowKind::Line, {std::move(label), std::move(value)});
  }
  void NumberLine(std::string label, double value) { Line(std::move(label), Value(value)); }
  void Heading(std::string text) {
    report_.Add(RowKind::Line, {});
    report_.Add(RowKind::Heading, {std::move(text)});
  }
  void ColumnHeadings(std::vector<std::string> cells) { report_.Add(RowKind::ColumnHeadings, std::move(cells)); }

  const Settings& settings_;
  const LocaleText& locale_;
  const NumberPatterns& patterns_;
  Report report_;
};

}  // namespace

std::string Headline(const Verdict& verdict) {
  if (verdict.Kind == VerdictKind::Sound) return "This answer can be trusted.";
  const std::string& why = verdict.Reasons.empty() ? verdict.Ended : verdict.Reasons.front();
  return (verdict.Kind == VerdictKind::Doubtful ? "Look twice: " : "No answer: ") + why;
}

Report DiagnosisReport(const std::vector<Diagnosis>& all, std::size_t which,
                       const DiagnosisCircumstances& circumstances, const Settings& settings, const LocaleText& locale,
                       const NumberPatterns& patterns) {
  const Diagnosis& diagnosis = all[which];
  Builder builder(settings, locale, patterns);
  builder.Judgement(diagnosis);
  builder.Warnings(circumstances.Warnings);
  builder.Errors(diagnosis);
  builder.Rank(all, which, circumstances.Choices);
  builder.Coefficients(diagnosis);
  builder.Quantities(diagnosis);
  builder.Limits(diagnosis, circumstances.Choices);
  builder.Correlations(diagnosis);
  builder.Outliers(diagnosis);
  return builder.Finish();
}

}  // namespace quorvex
