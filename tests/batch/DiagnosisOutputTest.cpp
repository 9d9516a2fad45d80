// What a macro's outputs tell of a diagnosis: the layouts of one made by hand, and real runs against published values.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

#include "Golden.h"
#include "TemporaryFolder.h"
#include "batch/Program.h"
#include "batch/ResultLine.h"
#include "batch/WriteDelimitedOutput.h"
#include "batch/WriteStructuredOutput.h"
#include "core/Files.h"
#include "engine/LoadModelCatalog.h"

namespace quorvex {
namespace {

// The validator's verdict on a file of results: how many lines it took, or why it did not.
std::string SchemaVerdict(const std::string& path, const TemporaryFolder& folder) {
  const std::string command = "/usr/bin/python3 " + TestData("check_results.py") + " " +
                              TestData("../../docs/result-schema.json") + " " + path + " >" + folder.Path("verdict") +
                              " 2>&1";
  static_cast<void>(std::system(command.c_str()));
  return folder.Read("verdict");
}

LimitsByLevel Around(double value, double step) {
  LimitsByLevel limits;
  for (std::size_t level = 0; level < limits.size(); ++level) {
    const double width = step * static_cast<double>(level + 1);
    limits[level] = {value - width, value + width};
  }
  return limits;
}

// One with everything that a diagnosis can say, its names as hostile as a user's, and one of a model that failed.
RunDiagnoses HandMade() {
  Diagnosis solved;
  solved.Id = "a, \"b\"\t= c";
  solved.Judgement = {VerdictKind::Doubtful,
                      "The search converged.",
                      {"The coefficient a is on its maximum, 3.", "2 says \"no\", too."}};
  solved.ReducedChiSquare = 1.25;
  const auto coefficient = [](const char* name, double value, double step) {
    CoefficientDiagnosis one;
    one.Name = name;
    one.Value = value;
    one.StdErr = step;
    one.Symmetric = Around(value, step);
    return one;
  };
  CoefficientDiagnosis a = coefficient("a", 3, 0.5), b = coefficient("b", 1e-9, 1e9), held = coefficient("held", 7, 0);
  a.IsAtMaximum = held.IsHeld = true;
  a.Profile = a.Symmetric;
  (*a.Profile)[3] = {-HUGE_VAL, NAN};
  b.Profile = b.Symmetric;
  b.Bootstrapped = BootstrapSpread{Around(0, 1), 0.125, 0.5};
  solved.Coefficients = {a, b, held};
  solved.CorrelationNames = {"a", "b"};
  solved.Correlation = Matrix(2);
  solved.Correlation(0, 0) = solved.Correlation(1, 1) = 1;
  solved.Correlation(0, 1) = solved.Correlation(1, 0) = -0.75;
  solved.Condition = 1e16;
  QuantityDiagnosis half, none;
  half.Name = "half", half.Expression = "max(a, b)/2", half.Value = 1.5, half.StdErr = 0.25;
  half.Symmetric = Around(1.5, 0.25);
  half.Bootstrapped = BootstrapSpread{Around(1.5, 0.5), NAN, HUGE_VAL};
  none.Name = "none, yet", none.Expression = "1/(a-3)", none.Fault = "It divides by 0.";
  solved.Quantities = {half, none};
  Ranking& rank = solved.Rank;
  rank.AICc = -12.5, rank.DeltaAICc = 0, rank.AkaikeWeight = 0.625, rank.Group = 1, rank.SameAs = 4;
  rank.LeaveOneOut = 0.1, rank.CrossValidated = 0.2;
  solved.Outliers = {3, 17};
  solved.BootstrapFailures = 2;
  Diagnosis failed;
  failed.Id = "never";
  failed.Judgement = {VerdictKind::Failed, "The search failed.", {"A value was not finite."}};
  return {{solved, failed}, {"More models were tried than there are points, \"2\" of them."}};
}

class Layouts : public testing::Test {
 protected:
  Layouts() {
    LoadModelCatalog(models, 1, locale);
    ModelClass& line = *models.Find("a*x+b");
    line.Solve = true;
    data.X = {{1, 2, 3, 4}};
    data.Y = {1, 3, 2, 5};
    data.SD = data.sig = {1, 1, 1, 1};
    SolveForm form;
    std::string log;
    EXPECT_TRUE(line.Fit(data, Settings(), log, form));
    line.LossScale = 0.5;
    ModelClass& failed = *models.Find("a*exp(b*x)");
    failed.Solve = true;
    failed.Failure = "A value was not finite.";
    setup.OutputFitInfo = false;
    setup.Diagnostics = setup.Weighted = setup.ProfileLimits = true;
    setup.Bootstrap = 100;
    setup.CrossValidation = 5;
    setup.Loss = LossKind::Huber;
  }

  using Write = void (*)(const ModelCollection&, const SolveData&, const MacroSetup&, const RunDiagnoses&,
                         const LineSink&);
  // From the coefficients on.
  std::string Written(Write write) {
    std::string text;
    write(models, data, setup, HandMade(), {[&](std::string_view line) { text.append(line).append(NL); }});
    return text.substr(text.find("Model_ID"));
  }

  const LocaleText locale;
  ModelCollection models;
  SolveData data;
  MacroSetup setup;
  TemporaryFolder folder;
};

TEST_F(Layouts, TellADiagnosis) {
  ExpectGolden("DiagnosisStructured.txt", Written(WriteStructuredOutput));
  setup.OutputDelimit = ",";
  ExpectGolden("DiagnosisSpreadsheet.txt", Written(WriteDelimitedOutput));
  const std::string line = ResultLine(RunResult(), models, data, setup, HandMade());
  ExpectGolden("DiagnosisLine.txt", line.substr(line.find("\"warnings\"")) + '\n');
  EXPECT_EQ(SchemaVerdict(folder.Write("line.jsonl", line + '\n'), folder), "1\n");
}

// Where the run was ended before it came to diagnoses the models stand without.
TEST_F(Layouts, GoWithoutDiagnosesThatAreNotThere) {
  const std::string line = ResultLine(RunResult(), models, data, setup, {});
  EXPECT_NE(line.find("\"diagnosis\":null"), std::string::npos);
  EXPECT_EQ(SchemaVerdict(folder.Write("line.jsonl", line + '\n'), folder), "1\n");
}

constexpr const char* kPuromycin = R"(B_MACRO
DataFile = @data.txt
DataFirstLine = 2
InputDelimit = Tab
OutputFile = @out.txt
ResultFile = @all.jsonl
LogFile = @run.log
Diagnostics = True
Limits = Profile
B_MODEL
ID = MM
Y = vm*x/(k+x)
Assign vm = 200, Operator = Value, Fit = True
Assign k = 0.05, Operator = Value, Fit = True
E_MODEL
E_MACRO
)";

std::string PuromycinData() {
  WholeFile file;
  EXPECT_EQ(file.Read(TestData("../../examples/data/puromycin_treated.txt")), 0);
  return std::string(file.Text());
}

// R 4.1: vcov and confint of nls(rate ~ Vm*conc/(K+conc)), AIC less n(1 + ln 2 pi), which all models share. R
// interpolates its profiles, and its standard errors are those of the iteration before the last.
TEST(DiagnosisOutput, HasTheNumbersOfR) {
  Program program(PuromycinData());
  ASSERT_EQ(program.RunMacro(kPuromycin), 0) << program.Log();
  const std::vector<ModelAnswer> answers = ReadAnswers(program.Folder.Read("out.txt"));
  ASSERT_EQ(answers.size(), 1u);
  const ModelAnswer& mm = answers[0];
  constexpr std::size_t kState = 6, kSymmetric = 7, kProfile = 15, kCorrelation = 23, kOf95 = 4;
  const double pi = std::acos(-1.0), shared = 12 * (1 + std::log(2 * pi));
  const struct {
    const char* Name;
    std::size_t Field;
    double Value, Tolerance;
  } cases[] = {
      {"AICc", 0, 98.27096865 - shared, 1e-6},
      {"BIC", 0, 96.7256885993 - shared, 1e-6},
      {"Akaike_weight", 0, 1, 0},
      {"vm", kProfile + kOf95, 197.30212847588, 2e-3},
      {"vm", kProfile + kOf95 + 1, 229.29006489262, 2e-3},
      {"k", kProfile + kOf95, 0.04692516839, 5e-6},
      {"k", kProfile + kOf95 + 1, 0.08615995299, 5e-6},
      {"vm", kSymmetric + kOf95, 212.683580 - 2.228138852 * 6.94714626, 5e-4},
      {"k", kCorrelation + 1, 0.7650834, 2e-6},
      {"k", kCorrelation, 1, 1e-14},
  };
  for (const auto& c : cases) EXPECT_NEAR(mm.Number(c.Name, c.Field), c.Value, c.Tolerance) << c.Name << ' ' << c.Field;
  EXPECT_EQ(mm.Values.at("Verdict").at(0), "Sound");
  EXPECT_EQ(mm.Values.at("k").at(kState), "free");
  EXPECT_EQ(SchemaVerdict(program.Folder.Path("all.jsonl"), program.Folder), "1\n");
}

// The lines of the file, whatever order the points have for the fit.
TEST(DiagnosisOutput, NamesOutliersByTheLineOfTheFile) {
  Program program("x y\n5 13.1\n1 5.0\n\n3 90\n2 7.0\n4 11.0\n6 15.1\n7 16.9\n8 -70\n9 21\n10 23\n");
  const std::string macro =
      "B_MACRO\nDataFile = @data.txt\nDataFirstLine = 2\nOutputFile = @out.txt\nDiagnostics = True\n"
      "Loss = Bisquare\nB_MODEL\nY = a+b*x\nE_MODEL\nE_MACRO\n";
  ASSERT_EQ(program.RunMacro(macro), 0);
  const std::string text = program.Folder.Read("out.txt");
  EXPECT_NE(text.find("Outlier_rows = 5\t10\r\n"), std::string::npos) << text;
}

// Every run has its own, but where a row changes only the output there is nothing new to compute.
TEST(DiagnosisOutput, BelongsToTheRun) {
  Program program("1 5.1\n2 6.9\n3 9.2\n4 10.8\n5 13.1\n");
  program.Folder.Write("other.txt", "1 2\n2 4.1\n3 5.9\n4 8.2\n5 9.8\n");
  program.Folder.Write("rows.csv", "D,O\ndata,a\ndata,b\nother,c\n");
  const std::string macro =
      "B_MACRO\nDataFile = @%D%.txt\nOutputFile = @%O%.out\nParameterFile = @rows.csv\nLogFile = @run.log\n"
      "Diagnostics = True\nB_MODEL\nY = a+b*x\nE_MODEL\nE_MACRO\n";
  ASSERT_EQ(program.RunMacro(macro), 0);
  const auto diagnosis = [&](const char* name) {
    const std::string text = program.Folder.Read(name);
    return text.substr(std::min(text.find("B_DIAGNOSIS"), text.size()));
  };
  EXPECT_EQ(diagnosis("a.out"), diagnosis("b.out"));
  EXPECT_NE(diagnosis("a.out"), diagnosis("c.out"));
  const std::string log = program.Log();
  std::size_t times = 0;
  for (std::size_t at = 0; (at = log.find("Diagnosing models\n", at)) != std::string::npos; ++at) ++times;
  EXPECT_EQ(times, 2u) << log;
  program.RunMacro(macro, "LC_ALL=de_DE.UTF-8");
  EXPECT_EQ(diagnosis("a.out"), diagnosis("b.out"));
}

// The answer stays, what is asked of it changes.
TEST(DiagnosisOutput, ReportsWhatTheRowAsksFor) {
  Program program("1 5.1\n2 6.9\n3 9.2\n4 10.8\n5 13.1\n");
  program.Folder.Write("rows.csv", "N\n7\n8\n");
  ASSERT_EQ(program.RunMacro("B_MACRO\nDataFile = @data.txt\nOutputFile = @%N%.out\nParameterFile = @rows.csv\n"
                             "Diagnostics = True\nB_MODEL\nY = a+b*x\nReport = at%N% = %N%*b\nE_MODEL\nE_MACRO\n"),
            0);
  for (const char* n : {"7", "8"}) {
    const ModelAnswer answer = ReadAnswers(program.Folder.Read(std::string(n) + ".out")).at(0);
    EXPECT_NEAR(answer.Number("at" + std::string(n), 8), std::stod(n) * answer.Number("b", 0), 1e-12);
  }
}

}  // namespace
}  // namespace quorvex
