#include <gtest/gtest.h>

#include "TableFile.h"
#include "core/NumberText.h"
#include "diagnosis/DerivedQuantity.h"
#include "diagnosis/Diagnosis.h"
#include "diagnosis/SolvedModel.h"
#include "engine/Points.h"
#include "engine/RankModels.h"
#include "engine/UserModel.h"
#include "files/ProjectFile.h"
#include "macro/MacroReader.h"
#include "macro/SubstituteParameters.h"
#include "results/FitInformation.h"
#include "sheet/ComputeWeights.h"

namespace quorvex {
namespace {

// The means and standard deviations of tests/data/dnase_sd.txt, in units of Y.
SolveData Assay(double unit, bool given = true) {
  SolveData data;
  data.X.resize(1);
  std::ifstream stream(TestData("dnase_sd.txt"));
  std::string line;
  std::getline(stream, line);
  while (std::getline(stream, line)) {
    const std::vector<std::string> cells = Split(line, '\t');
    data.X[0].push_back(Number(cells[0]));
    data.Y.push_back(Number(cells[1]) * unit);
    data.SD.push_back(Number(cells[2]) * unit);
  }
  data.HasSD = given;
  TakeWeights(data);
  return data;
}

struct LineFit {
  ModelCollection Models;
  Settings Preferences;
  std::vector<std::string> Warnings;

  explicit LineFit(std::vector<DerivedQuantity> reports = {}) {
    std::unique_ptr<ModelClass> model = NewModelFor(1, LocaleText());
    model->SetID("line", {"a+b*x"});
    model->UserType = true;
    model->Reports = std::move(reports);
    Models.Add("line", std::move(model));
  }
  ModelClass& Model() { return *Models.Find("line"); }
  Diagnosis Of(const SolveData& data, const DiagnosisChoices& choices = {}) {
    SolveForm form;
    std::string log;
    EXPECT_TRUE(Model().Fit(data, Preferences, log, form));
    std::vector<Diagnosis> all = Diagnose(Models, data, choices, 1, Preferences, form, Warnings);
    EXPECT_EQ(all.size(), 1u);
    return std::move(all.at(0));
  }
};

// The closed forms of a weighted straight line in 40 digits (mpmath); scipy's curve_fit gives the same with
// absolute_sigma=True and False.
TEST(Diagnose, TakesGivenDeviationsByTheirRatiosOrAtTheirWord) {
  for (const double unit : {1.0, 1e-9, 1e9})
    for (const bool absolute : {false, true}) {
      SCOPED_TRACE(std::to_string(unit) + (absolute ? " absolute" : " relative"));
      LineFit fit;
      fit.Preferences.AbsoluteDeviations = absolute;
      const Diagnosis d = fit.Of(Assay(unit));
      EXPECT_EQ(d.AbsoluteDeviations, absolute);
      EXPECT_NEAR(d.Coefficients[0].Value / unit / 0.2068192590808318, 1, 1e-8);
      EXPECT_NEAR(d.Coefficients[0].StdErr / unit / (absolute ? 0.012976124152152688 : 0.076118249267323893), 1, 1e-8);
      EXPECT_NEAR(d.Coefficients[1].StdErr / unit / (absolute ? 0.005728465258709858 : 0.033603311849428056), 1, 1e-8);
      const double half = d.Coefficients[1].Symmetric[2].Upper - d.Coefficients[1].Value;
      EXPECT_NEAR(half / d.Coefficients[1].StdErr, absolute ? 1.9599639845400542 : 2.4469, 1e-7);
      EXPECT_NEAR(d.ReducedChiSquare / 34.410231749457067, 1, 1e-9);
      EXPECT_NEAR(d.ChiSquareProbability / 7.9887703675321436e-42, 1, 1e-7);
      const std::string report = TabSeparated(FitInformation({&fit.Model(), nullptr}, {}, Settings(), LocaleText()));
      EXPECT_EQ(report.find("Reduced chi-square = ") != std::string::npos, absolute) << report;
      EXPECT_TRUE(fit.Warnings.empty());
    }
  LineFit none;
  none.Preferences.AbsoluteDeviations = true;
  SolveData bare = Assay(1, false);
  EXPECT_NEAR(none.Of(bare).Coefficients[0].StdErr, 0.076118249267323893, 1e-9);
  ASSERT_EQ(none.Warnings.size(), 1u);
  EXPECT_TRUE(
      none.Warnings[0].starts_with("Standard deviations are to be taken at their word, but the data have none"));
}

// As above.
TEST(Diagnose, ComputesQuantitiesWithTheirErrors) {
  LineFit fit({{"root", "-a / b"},
               {"power", "10 ^ (A + b) + pi"},
               {"ROOT", "1"},
               {"a", "b"},
               {"", "b"},
               {"none", " "},
               {"open", "(a"},
               {"far", "a+q"},
               {"place", "a*x"},
               {"log", "ln(-b)"},
               {"five", "5"}});
  fit.Preferences.AbsoluteDeviations = true;
  const Diagnosis d = fit.Of(Assay(1), {.Bootstrap = 20});
  ASSERT_EQ(d.Quantities.size(), 11u);
  EXPECT_NEAR(d.Quantities[0].Value, -1.1800065573899993, 1e-7);
  EXPECT_NEAR(d.Quantities[0].StdErr, 0.099038391922934871, 1e-8);
  EXPECT_NEAR(d.Quantities[1].Value, 5.5519911271112281, 1e-7);
  EXPECT_NEAR(d.Quantities[1].StdErr, 0.062611311703897405, 1e-8);
  EXPECT_NEAR(d.Quantities[1].Symmetric[3].Upper, 5.5519911271112281 + 2.5758293035489008 * 0.062611311703897405, 1e-7);
  ASSERT_TRUE(d.Quantities[0].Bootstrapped);
  EXPECT_LT(d.Quantities[0].Bootstrapped->Limits[2].Lower, d.Quantities[0].Value);
  const std::vector<std::string> faults = {"",
                                           "",
                                           "There are two quantities with the name 'ROOT'.",
                                           "The name 'a' of a quantity is that of a coefficient.",
                                           "A quantity to be reported has no name.",
                                           "The quantity 'none' has no expression.",
                                           "The quantity 'open' can't be read: ",
                                           "The quantity 'far' names 'q', which is no coefficient of the model.",
                                           "The quantity 'place' depends on X; it is to be made of coefficients.",
                                           "The quantity 'log' has no value for the coefficients found.",
                                           ""};
  for (std::size_t i = 0; i < faults.size(); ++i) {
    EXPECT_TRUE(d.Quantities[i].Fault.starts_with(faults[i])) << d.Quantities[i].Fault;
    EXPECT_EQ(d.Quantities[i].Fault.empty(), faults[i].empty()) << d.Quantities[i].Fault;
  }
  EXPECT_EQ(d.Quantities[10].Value, 5);
  EXPECT_EQ(d.Quantities[10].StdErr, 0);
}

TEST(Diagnose, TellsOfFailedModelsBehindTheSolved) {
  LineFit fit;
  std::unique_ptr<ModelClass> model = NewModelFor(1, LocaleText());
  model->SetID("log", {"a*ln(x-1)"});
  SolveForm form;
  std::string log;
  const SolveData data = Assay(1);
  EXPECT_FALSE(model->Fit(data, fit.Preferences, log, form));
  fit.Models.Add("log", std::move(model));
  EXPECT_TRUE(fit.Model().Fit(data, fit.Preferences, log, form));
  const auto all = Diagnose(fit.Models, data, {}, 1, fit.Preferences, form, fit.Warnings);
  ASSERT_EQ(all.size(), 2u);
  EXPECT_EQ(all[0].Id, "line");
  EXPECT_EQ(all[1].Judgement.Kind, VerdictKind::Failed);
  ASSERT_EQ(all[1].Judgement.Reasons.size(), 1u);
  EXPECT_TRUE(all[1].Judgement.Reasons[0].starts_with("With the estimates it began with, the model has no value at X"));
  form.Aborted = true;
  EXPECT_TRUE(Diagnose(fit.Models, data, {}, 1, fit.Preferences, form, fit.Warnings).empty());
}

// By R's confint the limits of 95 % are 14.05 and 38.46 where value and standard error say 12.2 and 26.1. Of a line
// they are the same.
TEST(Diagnose, DoubtsStandardErrorsWhoseProfileIsAnother) {
  SolveForm form;
  std::vector<std::string> warnings;
  DiagnosisChoices choices;
  for (const bool profile : {false, true}) {
    choices.ProfileLimits = profile;
    const SolveData demand = OxygenDemand();
    ModelCollection models;
    models.Add("demand", SolvedModel("a*(1-exp(-b*x))", demand, {19, 0.5}));
    models.Add("line", SolvedModel("a+b*x", demand, {1, 1}));
    const auto all = Diagnose(models, demand, choices, kSortByRSS, {}, form, warnings);
    ASSERT_EQ(all.size(), 2u);
    const std::string said =
        "The limits of 'a' and 'b' by their standard errors are not those of the profile: take the profile's.";
    EXPECT_EQ(std::ranges::count(all[0].Judgement.Reasons, said), profile ? 1 : 0);
    EXPECT_EQ(all[0].Judgement.Kind, profile ? VerdictKind::Doubtful : VerdictKind::Sound);
    EXPECT_EQ(all[1].Judgement.Kind, VerdictKind::Sound);
  }
}

TEST(Diagnose, KnowsNoErrorsOnABound) {
  LineFit fit({{"root", "-a/b"}, {"twice", "2*a"}});
  fit.Model().Coefficients[1].Maximum = 0.1;
  const Diagnosis d = fit.Of(Assay(1));
  EXPECT_TRUE(d.Coefficients[1].IsAtMaximum);
  EXPECT_TRUE(std::isnan(d.Coefficients[1].Symmetric[2].Lower) && std::isnan(d.Coefficients[1].StdErr));
  EXPECT_TRUE(std::isnan(d.Quantities[0].StdErr));
  EXPECT_GT(d.Quantities[1].StdErr, 0);
  EXPECT_EQ(std::ranges::count(d.Judgement.Notes,
                               "The error of the quantity 'root' is not known: 'b', on which it "
                               "depends, lies on a bound."),
            1);
}

TEST(Report, IsReadWithItsParametersAndKept) {
  const std::string text =
      "B_MACRO\nIndependentVariables = 1\nB_MODEL\nY = a+b*x\nReport = root = -A / b\n"
      "Report = at%N% = a + b * %N%\nreport = bad = a / q\nE_MODEL\nE_MACRO\n";
  Macro macro;
  Settings preferences;
  std::string log;
  ASSERT_TRUE(ReadMacro(text, LocaleText(), preferences, macro, log));
  EXPECT_NE(log.find("Warning: 'report = bad = a / q' has no answer: The quantity 'bad' names 'q', which is no "
                     "coefficient of the model."),
            std::string::npos)
      << log;
  EXPECT_EQ(log.find("root"), std::string::npos) << log;
  ASSERT_EQ(macro.DeferredReports.size(), 1u);
  const ModelClass& model = *macro.DeferredReports[0].Model;
  ASSERT_EQ(model.Reports.size(), 3u);
  EXPECT_EQ(model.Reports[0], (DerivedQuantity{"root", "-A / b"}));
  ParameterTable table;
  table.Names = {"N"};
  table.Rows = {{"7"}, {"8"}};
  int status = 0;
  MacroLog runLog(macro.Setup, status);
  for (std::size_t row = 0; row < 2; ++row) {
    EXPECT_TRUE(SubstituteParameters(macro, table, row, LocaleText(), runLog));
    const std::string n = table.Rows[row][0];
    EXPECT_EQ(model.Reports[1], (DerivedQuantity{"at" + n, "a + b * " + n}));
  }
}

TEST(ProjectFile, KeepsQuantitiesAndTheScaleOfErrors) {
  Project project = NewProject(1, true, LocaleText());
  const SolveData data = Assay(1);
  for (std::size_t i = 0; i < data.N(); ++i) {
    project.Sheet.Cells.SetGridCellNumber(i + 1, 1, data.X[0][i]);
    project.Sheet.Cells.SetGridCellNumber(i + 1, 2, data.Y[i]);
    project.Sheet.Cells.SetGridCellNumber(i + 1, 3, data.SD[i]);
  }
  LineFit fit({{"root", "-a / b"}, {"sum", "a+b"}});
  fit.Preferences.AbsoluteDeviations = true;
  fit.Of(data);
  const ModelClass& before = fit.Model();
  project.Models.Add("line", before.CopyTo());
  const Result<Project> reopened = ParseProject(ProjectText(project), "line.qvx", LocaleText());
  ASSERT_TRUE(reopened) << reopened.error();
  const ModelClass& model = *reopened->Models.Find("line");
  EXPECT_TRUE(model.Solved);
  EXPECT_EQ(model.Reports, before.Reports);
  EXPECT_NEAR(model.StandardError(1) / before.StandardError(1), 1, 1e-12);
}

}  // namespace
}  // namespace quorvex
