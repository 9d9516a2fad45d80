// The nonlinear reference sets of NIST's StRD, each as a macro run by the program from both certified starts.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>

#include "batch/Program.h"

namespace quorvex {
namespace {

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::stringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

// A row of index.tsv, by the names of its header.
using Row = std::map<std::string, std::string>;

std::vector<Row> NonlinearSets() {
  std::ifstream file(QUORVEX_TEST_DATA "/nist/index.tsv");
  std::string line;
  std::getline(file, line);
  const std::vector<std::string> names = Split(line, '\t');
  std::vector<Row> rows;
  while (std::getline(file, line)) {
    const std::vector<std::string> fields = Split(line, '\t');
    Row row;
    for (std::size_t i = 0; i < names.size(); ++i) row[names[i]] = fields[i];
    if (row["kind"] == "nonlinear") rows.push_back(row);
  }
  return rows;
}

// Correct significant digits, 11 at most: as many as the certificate has.
double Digits(double value, double certified) {
  const double error = std::abs(value - certified) / std::abs(certified);
  return error < 1e-11 ? 11.0 : -std::log10(error);
}

// How a plain Levenberg-Marquardt run goes from that start: "ok N D", "slow N D" or "fails N WHY".
struct Expectation {
  explicit Expectation(const std::string& text) : words(Split(text, ' ')) {}
  bool Fails() const { return words[0] == "fails"; }
  bool Slow() const { return words[0] == "slow"; }
  double Digits() const { return std::stod(words[2]); }
  std::vector<std::string> words;
};

std::string MacroFor(const Row& row, const std::vector<std::string>& start, bool slow) {
  const std::vector<std::string> names = Split(row.at("coef_names"), ' ');
  std::string macro = "B_MACRO\n";
  if (slow) macro += "MaxIterations = 10000\n";
  macro += "DataFile = " QUORVEX_TEST_DATA "/nist/" + row.at("file") + "\nIndependentVariables = " + row.at("n_indep") +
           "\nOutputFile = @out.txt\nLogFile = @run.log\nB_MODEL\nY = " + row.at("model") + "\n";
  for (std::size_t i = 0; i < names.size(); ++i)
    macro += "Assign " + names[i] + " = " + start[i] + ", Operator = value, Fit = True\n";
  return macro + "E_MODEL\nE_MACRO\n";
}

TEST(ReferenceFits, ReachTheCertifiedValuesAsPlainLevenbergMarquardtDoes) {
  std::printf("%-10s %5s %6s %6s %6s %6s  %s\n", "set", "start", "coef", "s.e.", "RSS", "iter", "end");
  const std::vector<Row> sets = NonlinearSets();
  ASSERT_EQ(sets.size(), 13u);
  for (const Row& row : sets) {
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
      const char* const end = singular ? "singular" : stuck ? "unchanged" : converged ? "converged" : "limit";

      double coefficients = 0, deviations = 0, rss = 0;
      std::string iterations = "-";
      if (!answers.empty()) {
        const std::vector<std::string> names = Split(row.at("coef_names"), ' ');
        const std::vector<std::string> values = Split(row.at("certified"), ' ');
        const std::vector<std::string> errors = Split(row.at("certified_sd"), ' ');
        coefficients = deviations = 11;
        for (std::size_t i = 0; i < names.size(); ++i) {
          coefficients = std::min(coefficients, Digits(answers[0].Number(names[i]), std::stod(values[i])));
          deviations = std::min(deviations, Digits(answers[0].Number(names[i], 1), std::stod(errors[i])));
        }
        rss = Digits(answers[0].Number("Residual_Sum_of_Squares_(Absolute)"), std::stod(row.at("certified_rss")));
        iterations = answers[0].Values.at("Number_of_nonlinear_iterations_performed")[0];
      }
      std::printf("%-10s %5s %6.1f %6.1f %6.1f %6s  %s\n", row.at("name").c_str(), start.c_str(), coefficients,
                  deviations, rss, iterations.c_str(), end);
      if (expected.Fails()) {
        // The search runs away to a place that fits nothing, where the matrix becomes singular.
        EXPECT_TRUE(singular || stuck) << log;
        EXPECT_LT(coefficients, 1);
      } else {
        EXPECT_TRUE(converged || stuck) << log;
        EXPECT_GE(coefficients, expected.Digits() - 1.5);
        EXPECT_GE(deviations, 5);
        EXPECT_GE(rss, 5);
      }
    }
  }
}

}  // namespace
}  // namespace quorvex
