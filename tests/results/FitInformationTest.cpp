#include <gtest/gtest.h>

#include "Golden.h"
#include "NistSets.h"
#include "core/NumberText.h"
#include "engine/RobustFit.h"
#include "results/FitInformation.h"
#include "results/SolvedProject.h"
#include "solve/GatherData.h"

namespace quorvex {
namespace {

using Texts = std::vector<std::string>;

const FitCircumstances kFromFile{"line.qvx", 5, 0, {0, 0, 0}};

// The rows under a heading, its column headings first, up to the empty row.
std::vector<Texts> Block(const Report& report, const std::string& heading) {
  std::vector<Texts> block;
  const auto& rows = report.Rows();
  auto at = std::find_if(rows.begin(), rows.end(), [&](const Report::Row& row) {
    return row.Kind == RowKind::Heading && row.Cells[0] == heading;
  });
  if (at == rows.end()) return block;
  for (++at; at != rows.end() && !at->Cells.empty(); ++at) block.push_back(at->Cells);
  return block;
}

Texts Headings(const Report& report) {
  Texts headings;
  for (const Report::Row& row : report.Rows())
    if (row.Kind == RowKind::Heading) headings.push_back(row.Cells[0]);
  return headings;
}

// The value behind a label, "-" where there is no such line.
std::string ValueOf(const Report& report, const std::string& label) {
  for (const Report::Row& row : report.Rows())
    if (row.Kind == RowKind::Line && row.Cells.size() == 2 && row.Cells[0] == label) return row.Cells[1];
  return "-";
}

// The whole text, and numbers that hold to mpmath at 30 digits: t-ratio 12.2474487139159, Prob(t) and Prob(F) 0.001172.
TEST(FitInformation, TellsOfALinearFit) {
  Project project = LineProject();
  const SolvedItem solution{&SolveModel(project, "a*x+b", 1), nullptr};
  ExpectGolden("FitInformation.txt", TabSeparated(FitInformation(solution, kFromFile, Settings(), LocaleText())));
}

TEST(FitInformation, AgreesWithTheCertifiedLine) {
  Project project = ProjectOf({{}, {}});
  for (const NistSet& row : NistSets("linear")) {
    if (row.at("name") != "Norris") continue;
    std::ifstream file(TestData("nist/" + row.at("file")));
    std::size_t n = 0;
    for (std::string line; std::getline(file, line);) {
      std::replace(line.begin(), line.end(), '\t', ' ');
      const std::vector<double> cells = Numbers(line);
      ++n;
      project.Sheet.Cells.SetGridCellNumber(n, 1, cells[0]);
      project.Sheet.Cells.SetGridCellNumber(n, 2, cells[1]);
    }
  }
  const SolvedItem solution{&SolveModel(project, "a*x+b", 1), nullptr};
  const Report report = FitInformation(solution, {"Norris", 36, 0, {}}, Settings(), LocaleText());
  for (const auto& row : TableRows("norris_report.txt", 5)) {
    SCOPED_TRACE(row[0] + row[1] + row[2]);
    const auto block = Block(report, row[0]);
    const std::string text =
        row[1].empty() ? ValueOf(report, row[0]) : block.at(std::stoul(row[1])).at(std::stoul(row[2]));
    const auto value = NumericText(text);
    ASSERT_TRUE(value) << text;
    EXPECT_GE(CorrectDigits(*value, Number(row[3]), Number(row[4])), Number(row[4])) << text;
  }
  EXPECT_EQ(Block(report, "Regression Variable Results").size(), 3u);
  EXPECT_EQ(Block(report, "Variance Analysis").size(), 4u);
  EXPECT_EQ(Block(report, "95% Confidence Intervals").size(), 3u);
}

TEST(FitInformation, LeavesOutWhatTheSettingsSwitchOff) {
  Project project = LineProject();
  const SolvedItem solution{&SolveModel(project, "a*x+b", 1), nullptr};
  const Texts all = {"Regression Variable Results", "68% Confidence Intervals", "90% Confidence Intervals",
                     "95% Confidence Intervals",    "99% Confidence Intervals", "Variance Analysis"};
  const struct {
    const char *key, *heading;
  } kCases[] = {{"show68ci", "68% Confidence Intervals"}, {"show90ci", "90% Confidence Intervals"},
                {"show95ci", "95% Confidence Intervals"}, {"show99ci", "99% Confidence Intervals"},
                {"showvariance", "Variance Analysis"},    {"showsumstats", ""}};
  for (const auto& c : kCases) {
    Settings settings;
    settings.Set(c.key, "0");
    const Report report = FitInformation(solution, kFromFile, settings, LocaleText());
    Texts expected = all;
    std::erase(expected, c.heading);
    EXPECT_EQ(Headings(report), expected) << c.key;
    EXPECT_EQ(ValueOf(report, "Sum of Residuals = ") == "-", std::string(c.key) == "showsumstats");
  }
}

TEST(FitInformation, TellsOfIterationsOnlyWithAllLimits) {
  Project project = LineProject();
  AddModel(project, "Mine", {"F1+b", "a*x"});
  const SolvedItem solution{&SolveModel(project, "Mine", 0), nullptr};
  for (const SolveLimits& limits :
       {SolveLimits{1e-10, 250, 10}, SolveLimits{0, 250, 10}, SolveLimits{1e-10, 0, 10}, SolveLimits{1e-10, 250, 0}}) {
    const Report report = FitInformation(solution, {"p", 5, 0, limits}, Settings(), LocaleText());
    const bool all = limits == SolveLimits{1e-10, 250, 10};
    EXPECT_EQ(ValueOf(report, "Nonlinear iteration limit = "), all ? "250" : "-");
    EXPECT_EQ(ValueOf(report, "Diverging nonlinear iteration limit ="), all ? "10" : "-");
    EXPECT_EQ(ValueOf(report, "Residual tolerance = "), all ? "1E-10" : "-");
    EXPECT_EQ(ValueOf(report, "Number of nonlinear iterations performed = "),
              all ? std::to_string(solution.Model->NumIterations) : "-");
    EXPECT_EQ(ValueOf(report, "F1 = "), "a*x");
    EXPECT_EQ(ValueOf(report, "Y = "), "F1+b");
  }
}

TEST(FitInformation, LeavesCellsEmptyThatHaveNoNumber) {
  Project project = LineProject();
  ModelClass& model = SolveModel(project, "a*x+b", 1);
  const SolvedItem solution{&model, nullptr};
  const auto report = [&] { return FitInformation(solution, kFromFile, Settings(), LocaleText()); };
  model.SetCovariance(2, 0);  // held: it has a value and no uncertainty
  EXPECT_EQ(Block(report(), "Regression Variable Results")[2],
            (Texts{"b", GeneralNumber(model.Values(2)), "0", "", ""}));
  EXPECT_EQ(Block(report(), "99% Confidence Intervals")[2][2], "0");
  model.RssNorm = 0;  // a perfect fit
  EXPECT_EQ(Block(report(), "Variance Analysis")[1][4], "Infinity");
  EXPECT_EQ(Block(report(), "Variance Analysis")[1][5], "");
  model.RssNorm = model.RST + 1;
  EXPECT_TRUE(Block(report(), "Variance Analysis").empty());
  model.RssNorm = 1;
  model.DOFRegression = 0;
  EXPECT_TRUE(Block(report(), "Variance Analysis").empty());
}

TEST(FitInformation, SumsUpASearchFromRanges) {
  Project project = LineProject();
  ModelClass& model = AddModel(project, "Mine", {"a*x+b"});
  model.SetICRange({{0, 4, 3}, {1, 1, 1}});
  model.SpecifyICComplete = true;
  SolveModel(project, "Mine", 0);
  ASSERT_EQ(model.SweepCount, 3);
  const SolvedItem solution{&model, nullptr};
  auto block = Block(FitInformation(solution, kFromFile, Settings(), LocaleText(), {"0.0000", ""}),
                     "Initial Condition Range Summary");
  ASSERT_EQ(block.size(), 5u);
  EXPECT_EQ(block[0], (Texts{"a", "", "b", "", "", "", "", "", "a", "b"}));
  EXPECT_EQ(block[1], (Texts{"Initial Value", "Fitted Value", "Initial Value", "Fitted Value", "RSS", "R^2", "Ra^2",
                             "Std Err", "Range", "Range"}));
  const char* starts[] = {"0.0000", "2.0000", "4.0000"};
  for (std::size_t set = 0; set < 3; ++set)  // R^2 = 1 - 0.8/40.8, Ra^2 = R^2 - (1 - R^2)/3
    EXPECT_EQ(block[2 + set], (Texts{starts[set], "2.0000", "1.0000", "1.2000", "0.8000", "0.9804", "0.9739", "0.5164",
                                     "0.0000 to 4.0000", "1.0000"}));

  model.SetSweepInfo({{.Start = {0, 1}, .Final = {}}, {.Start = {2, 1}, .Final = {}}});  // as a project file tells it
  block = Block(FitInformation(solution, kFromFile, Settings(), LocaleText()), "Initial Condition Range Summary");
  EXPECT_EQ(block[3], (Texts{"2", "", "1", "", "", "", "", "", "0 to 4", "1"}));
  model.SweepCount = 1;
  EXPECT_EQ(Headings(FitInformation(solution, kFromFile, Settings(), LocaleText())).back(), "Variance Analysis");
}

TEST(FitInformation, EndsWithHowASearchEndedOtherThanByConverging) {
  Project project = LineProject();
  ModelClass& model = SolveModel(project, "a*x+b", 1);
  const auto last = [&] {
    return FitInformation({&model, nullptr}, kFromFile, Settings(), LocaleText()).Rows().back();
  };
  EXPECT_EQ(last().Cells[0], "Total");
  const std::pair<SearchEnd, const char*> kEnds[] = {
      {SearchEnd::Unchanged, "unchanged: its last iterations found nothing better"},
      {SearchEnd::IterationLimit, "at the iteration limit, before it converged"},
      {SearchEnd::Paused, "by Pause, before it converged"}};
  for (const auto& [end, text] : kEnds) {
    model.Ended = end;
    EXPECT_EQ(last().Cells, (Texts{"Search ended:", text}));
  }
}

TEST(FitInformation, TellsTheLossAndItsOutliers) {
  Project project = LineProject();
  ModelClass& model = SolveModel(project, "a*x+b", 1);
  const std::size_t rows = FitInformation({&model, nullptr}, kFromFile, Settings(), LocaleText()).Rows().size();
  model.Loss = LossKind::Huber;
  model.LossScale = 0.25;
  const SolveData points = GatherData(project.Sheet).Points;
  FitCircumstances circumstances = kFromFile;
  circumstances.Points = &points;
  const Report report = FitInformation({&model, nullptr}, circumstances, Settings(), LocaleText());
  EXPECT_EQ(report.Rows().size(), rows + 4);
  EXPECT_EQ(ValueOf(report, "Residuals count as: "), "Huber");
  EXPECT_EQ(ValueOf(report, "Scale of good residuals, found from them = "), "0.25");
  EXPECT_EQ(ValueOf(report, "Outliers:"), OutlierText(OutlierRows(model, points)).substr(10));
}

TEST(FitInformation, WritesNumbersAsTheUserDoes) {
  const LocaleText german{',', ';', '.', '.', ':'};
  Project project = LineProject(german);
  const SolvedItem solution{&SolveModel(project, "a*x+b", 1), nullptr};
  const Report report = FitInformation(solution, {"p", 5, 0, {1e-10, 1, 1}}, Settings(), german);
  EXPECT_EQ(ValueOf(report, "Proportion of Variance Explained = "), "98,03921569%");
  EXPECT_EQ(Block(report, "Regression Variable Results")[1][4], "0,00117");
}

TEST(FitInformation, KnowsOnlyTheHeadOfAnInterpolation) {
  Project project = LineProject();
  std::string log;
  ASSERT_TRUE(project.Interpolations[0].Fit(GatherData(project.Sheet).Points, log));
  const Report report = FitInformation({nullptr, &project.Interpolations[0]}, kFromFile, Settings(), LocaleText());
  EXPECT_EQ(ValueOf(report, "Equation ID: "), "Cubic Spline");
  EXPECT_EQ(ValueOf(report, "Model Definition:"), "Cubic Spline Interpolation");
  EXPECT_EQ(ValueOf(report, "Number of observations = "), "5");
  EXPECT_TRUE(Headings(report).empty());
}

// Prob(t) of a coefficient 1e6 standard errors away from 0 rounds to "0.0" in its pattern.
TEST(FitInformation, WritesAsManyDigitsAsItsPatternsAsk) {
  Project project = LineProject();
  ModelClass& model = SolveModel(project, "a*x+b", 1);
  model.SetValue(1, 2.0 / 3);
  model.StdErr = 1e-6;
  const auto row = [&](const NumberPatterns& patterns) {
    Texts cells = Block(FitInformation({&model, nullptr}, kFromFile, Settings(), LocaleText(), patterns),
                        "Regression Variable Results")[1];
    return Texts{cells[1], cells[4]};
  };
  const NumberPatterns window = WindowPatterns();
  EXPECT_EQ(row({}), (Texts{"0.666666666666667", "0.0"}));
  EXPECT_EQ(row(window.Shown()), (Texts{"0.6666667", "2.4E-19"}));
  const Texts full = row(window.InFull());
  EXPECT_EQ(full[0], "0.666666666666667");
  EXPECT_GT(NumericText(full[1]).value(), 0);
  EXPECT_LT(NumericText(full[1]).value(), 1e-15);
  NumberPatterns chosen = window;
  chosen.Values = "0.00";
  EXPECT_EQ(row(chosen.InFull())[0], "0.67");
}

TEST(FitInformation, NamesTheWeightsOfWeightedData) {
  Project project = LineProject();
  const SolvedItem solution{&SolveModel(project, "a*x+b", 1), nullptr};
  for (const bool weighted : {false, true}) {
    FitCircumstances circumstances = kFromFile;
    circumstances.Weighted = weighted;
    const Report report = FitInformation(solution, circumstances, Settings(), LocaleText());
    EXPECT_EQ(ValueOf(report, "Weighted by ").starts_with("1/SD^2"), weighted);
    EXPECT_EQ(ValueOf(report, "Standard errors ").starts_with("scaled by"), weighted);
  }
}

}  // namespace
}  // namespace quorvex
