// The nonlinear reference sets of NIST's StRD, each as a macro run by the program from both certified starts.

#include <gtest/gtest.h>

#include <algorithm>

#include "NistSets.h"
#include "Paths.h"
#include "batch/Program.h"

namespace quorvex {
namespace {

// How a plain Levenberg-Marquardt run goes from that start: "ok N D", "slow N D" or "fails N WHY".
struct Expectation {
  explicit Expectation(const std::string& text) : words(Split(text, ' ')) {}
  bool Fails() const { return words[0] == "fails"; }
  bool Slow() const { return words[0] == "slow"; }
  double Digits() const { return std::stod(words[2]); }
  double Iterations() const { return std::stod(words[1]); }
  std::vector<std::string> words;
};

// Where the number of iterations follows the last bits of the arithmetic, so that right programs differ by ten and
// more.
bool CountIsLoose(const std::string& set, const std::string& start) {
  return set.starts_with("Misra1") || set == "DanWood" || (set == "Eckerle4" && start == "1");
}

std::string MacroFor(const NistSet& row, const std::vector<std::string>& start, bool slow) {
  const std::vector<std::string> names = Split(row.at("coef_names"), ' ');
  std::string macro = "B_MACRO\n";
  if (slow) macro += "MaxIterations = 10000\n";
  macro += "DataFile = " + TestData("nist/" + row.at("file")) + "\nIndependentVariables = " + row.at("n_indep") +
           "\nOutputFile = @out.txt\nLogFile = @run.log\nB_MODEL\nY = " + row.at("model") + "\n";
  for (std::size_t i = 0; i < names.size(); ++i)
    macro += "Assign " + names[i] + " = " + start[i] + ", Operator = value, Fit = True\n";
  return macro + "E_MODEL\nE_MACRO\n";
}

TEST(ReferenceFits, ReachTheCertifiedValuesAsPlainLevenbergMarquardtDoes) {
  std::printf("%-10s %5s %6s %6s %6s %6s  %s\n", "set", "start", "coef", "s.e.", "RSS", "iter", "end");
  const std::vector<NistSet> sets = NistSets("nonlinear");
  ASSERT_EQ(sets.size(), 13u);
  for (const NistSet& row : sets) {
    for (const std::string start : {"1", "2"}) {
      SCOPED_TRACE(row.at("name") + " from start " + start);
      const Expectation expected(row.at("lm_start" + start));
      Program program;
      ASSERT_EQ(program.RunMacro(MacroFor(row, Split(row.at("start" + start), ' '), expected.Slow())), 0);
      const std::string log = program.Folder.Read("run.log");
      const std::vector<ModelAnswer> answers = ReadAnswers(program.Folder.Read("out.txt"));
      const bool stuck = log.find("Merit Function unchanged during last 10") != std::string::npos;
      const bool singular = log.find("Singular matrix encountered in gaussian elimination.") != std::string::npos;
      const bool converged = log.find("Solution converged to residual change less than") != std::string::npos;
      const std::string end = singular ? "singular" : stuck ? "unchanged" : converged ? "converged" : "limit";

      double coefficients = 0, deviations = 0, rss = 0;
      std::string iterations = "-";
      if (!answers.empty()) {
        const std::vector<std::string> names = Split(row.at("coef_names"), ' ');
        const std::vector<double> values = Numbers(row.at("certified"));
        const std::vector<double> errors = Numbers(row.at("certified_sd"));
        coefficients = deviations = 11;
        for (std::size_t i = 0; i < names.size(); ++i) {
          coefficients = std::min(coefficients, CorrectDigits(answers[0].Number(names[i]), values[i], 11));
          deviations = std::min(deviations, CorrectDigits(answers[0].Number(names[i], 1), errors[i], 11));
        }
        rss = CorrectDigits(answers[0].Number("Residual_Sum_of_Squares_(Absolute)"), std::stod(row.at("certified_rss")),
                            11);
        iterations = answers[0].Values.at("Number_of_nonlinear_iterations_performed")[0];
      }
      std::printf("%-10s %5s %6.1f %6.1f %6.1f %6s  %s\n", row.at("name").c_str(), start.c_str(), coefficients,
                  deviations, rss, iterations.c_str(), end.c_str());
      if (expected.Fails()) {
        EXPECT_EQ(end, expected.words[2]) << log;
      } else {
        EXPECT_TRUE(converged || stuck) << log;
        EXPECT_GE(coefficients, expected.Digits() - 1.5);
        EXPECT_GE(deviations, 5);
        EXPECT_GE(rss, 5);
        if (!CountIsLoose(row.at("name"), start)) {
          EXPECT_NEAR(std::stod(iterations), expected.Iterations(), 1);
        }
      }
    }
  }
}

}  // namespace
}  // namespace quorvex
