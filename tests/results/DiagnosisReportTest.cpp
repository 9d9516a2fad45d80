#include <gtest/gtest.h>

#include "Golden.h"
#include "results/DiagnosisReport.h"

namespace quorvex {
namespace {

LimitsByLevel Limits(double value, double half) {
  LimitsByLevel limits;
  for (std::size_t i = 0; i < limits.size(); ++i) {
    const double width = half * static_cast<double>(i + 1);
    limits[i] = {value - width, value + width};
  }
  return limits;
}

CoefficientDiagnosis CoefficientOf(const char* name, double value, double error) {
  CoefficientDiagnosis one;
  one.Name = name;
  one.Value = value;
  one.StdErr = error;
  one.Symmetric = Limits(value, error);
  return one;
}

QuantityDiagnosis QuantityOf(const char* name, const char* expression) {
  QuantityDiagnosis one;
  one.Name = name;
  one.Expression = expression;
  return one;
}

// Three answers: one with everything that can be told, a rival with the same curve, and one far behind. The numbers are
// made up, and exact in binary.
std::vector<Diagnosis> Answers() {
  Diagnosis first;
  first.Id = "a*exp(-b*x)+c";
  first.Judgement = {
      VerdictKind::Doubtful, "The search converged.", {"b and c are hardly told apart.", "c is held."}, {}};
  first.AbsoluteDeviations = true;
  first.ReducedChiSquare = 1.25;
  first.ChiSquareProbability = 0.25;
  first.Condition = 1024;
  CoefficientDiagnosis a = CoefficientOf("a", 2.5, 0.125);
  a.Profile = Limits(2.5, 0.25);
  (*a.Profile)[3] = {-HUGE_VAL, NAN};
  a.Curve.AboveEnds = "The model has no value above 4.";
  a.Bootstrapped = BootstrapSpread{Limits(2.5, 0.375), 0.0625, 0.125};
  CoefficientDiagnosis b = CoefficientOf("b", 0.5, 0);
  b.IsAtMinimum = true;
  CoefficientDiagnosis c = CoefficientOf("c", 1, 0);
  c.IsHeld = true;
  first.Coefficients = {a, b, c};
  first.CorrelationNames = {"a", "b"};
  first.Correlation = Matrix(2);
  for (std::size_t i = 0; i < 2; ++i)
    for (std::size_t j = 0; j < 2; ++j) first.Correlation(i, j) = i == j ? 1 : -0.75;
  QuantityDiagnosis half = QuantityOf("half", "ln(2)/b");
  half.Value = 1.5;
  half.StdErr = 0.25;
  half.Symmetric = Limits(1.5, 0.25);
  QuantityDiagnosis worse = QuantityOf("worse", "1/q");
  worse.Fault = "The variable 'q' is unknown.";
  first.Quantities = {half, worse};
  first.Rank = {.AICc = 10.5,
                .BIC = 12.5,
                .DeltaAICc = 0,
                .AkaikeWeight = 0.625,
                .Group = 1,
                .LeaveOneOut = 0.375,
                .CrossValidated = HUGE_VAL,
                .FailedParts = 1};
  first.Outliers = {2, 7};
  first.BootstrapFailures = 3;

  Diagnosis second;
  second.Id = "c+a/exp(b*x)";
  second.Judgement = {VerdictKind::Sound, "The search converged.", {}, {"c may be 0."}};
  second.Rank = {.AICc = 10.75, .BIC = 12.75, .DeltaAICc = 0.25, .AkaikeWeight = 0.375, .Group = 1, .SameAs = 1};
  Diagnosis third;
  third.Id = "a*x+b";
  third.Judgement = {VerdictKind::Failed, "The model has no value at row 3.", {}, {}};
  third.Rank = {.AICc = 90, .Group = 2};
  return {first, second, third};
}

const DiagnosisCircumstances kCircumstances = {.Choices = {.Bootstrap = 200, .CrossValidation = 5},
                                               .Warnings = {"More models than points."}};

TEST(DiagnosisReport, TellsEverythingThatIsKnown) {
  const LocaleText german{.DecimalSeparator = ','};
  ExpectGolden("DiagnosisReport.txt", TabSeparated(DiagnosisReport(Answers(), 0, kCircumstances, Settings(), german)) +
                                          "----\r\n" +
                                          TabSeparated(DiagnosisReport(Answers(), 1, kCircumstances, Settings(), {})));
}

TEST(DiagnosisReport, ShowsTheLevelsOfTheSettings) {
  Settings settings;
  for (const char* level : {"show68ci", "show90ci", "show99ci"}) settings.Set(level, "0");
  const std::string text = TabSeparated(DiagnosisReport(Answers(), 0, kCircumstances, settings, {}));
  EXPECT_NE(text.find("95% Limits\r\n"), std::string::npos);
  for (const char* gone : {"68% Limits", "90% Limits", "99% Limits"}) EXPECT_EQ(text.find(gone), std::string::npos);
}

TEST(DiagnosisReport, SumsUpAVerdictInALine) {
  const std::vector<Diagnosis> answers = Answers();
  EXPECT_EQ(Headline(answers[0].Judgement), "Look twice: b and c are hardly told apart.");
  EXPECT_EQ(Headline(answers[1].Judgement), "This answer can be trusted.");
  EXPECT_EQ(Headline(answers[2].Judgement), "No answer: The model has no value at row 3.");
}

}  // namespace
}  // namespace quorvex
