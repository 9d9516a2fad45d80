// The built-in models as a macro uses them, and the linear road through the model objects.

#include <gtest/gtest.h>

#include <cmath>

#include "batch/Program.h"
#include "equation/Catalogue.h"

namespace quorvex {
namespace {

constexpr const char* kHead =
    "B_MACRO\nDataFile = @data.txt\nOutputFile = @out.txt\nLogFile = @run.log\nIndependentVariables = 1\n";

// The part of the log that speaks of each model in turn, with bare line ends.
std::vector<std::string> Accounts(const Program& program) {
  const std::string log = program.Log();
  constexpr std::string_view kBegin = "Beginning non-linear solution for model ";
  std::vector<std::string> accounts;
  for (std::size_t at = log.find(kBegin); at < log.size();) {
    const std::size_t next = std::min(log.find(kBegin, at + 1), log.find("Writing solution", at + 1));
    accounts.push_back(log.substr(at + kBegin.size(), next - at - kBegin.size()));
    at = log.find(kBegin, at + 1);
  }
  return accounts;
}

// Every model on a thousand noisy points with X above 1: solved, or failed in the words for it, and none breaks the
// run.
TEST(CatalogueMacro, SolvesOrRefusesEachOfAll298Models) {
  std::string data, macro = kHead;
  unsigned state = 1;
  for (int i = 1; i <= 1000; ++i) {
    state = state * 1664525u + 1013904223u;
    const double x = 1 + 9 * i / 1000.0;
    const double noise = 0.16 * (static_cast<double>(state >> 8) / 16777216.0 - 0.5);
    data += std::to_string(x) + "\t" + std::to_string(2 + 6 * std::pow(x, 1.3) * std::exp(-0.45 * x) + noise) + "\n";
  }
  for (const CatalogueModel& model : Catalogue(1)) macro += "B_MODEL\nY = " + model.Definition + "\nE_MODEL\n";
  Program program(data);
  ASSERT_EQ(program.RunMacro(macro + "E_MACRO\n"), 0);

  const std::vector<std::string> accounts = Accounts(program);
  // "a+b*ln(x)" and "a+b/x" stand twice in the catalogue, and the block finds the first of them.
  ASSERT_EQ(accounts.size(), 296u);
  std::size_t solved = 0;
  for (const std::string& account : accounts) {
    EXPECT_EQ(account.find("nan"), std::string::npos) << account;
    const bool complete = account.ends_with("Solution Complete\n\n");
    solved += complete;
    if (complete) continue;
    EXPECT_NE(account.find("Solution failed: Numerical Error\nCurrent parameter values:\n"), std::string::npos)
        << account;
    EXPECT_TRUE(account.find("\nError evaluating the function at X =") != std::string::npos ||
                account.find("\nError taking derivatives at X = ") != std::string::npos ||
                account.find("Singular matrix encountered in gaussian elimination.\n") != std::string::npos ||
                account.find("Beginning non-linear iterations\nSolution failed") != std::string::npos)
        << account;
  }
  const std::vector<ModelAnswer> answers = ReadAnswers(program.Folder.Read("out.txt"));
  EXPECT_EQ(answers.size(), solved);
  EXPECT_GE(solved, 280u);
  std::printf("%zu of 296 models solved\n", solved);
  for (std::size_t i = 1; i < answers.size(); ++i)
    EXPECT_LE(answers[i - 1].Number("Residual_Sum_of_Squares_(Absolute)"),
              answers[i].Number("Residual_Sum_of_Squares_(Absolute)"));
}

TEST(CatalogueMacro, GoesOnFromDefaultsWhereDataCannotBeLinearised) {
  Program program("1 -1.5\n2 0.2\n3 1\n4 4\n5 7\n");
  ASSERT_EQ(program.RunMacro(std::string(kHead) + "B_MODEL\nY = exp(a+b*x)\nE_MODEL\nE_MACRO\n"), 0);
  const std::vector<std::string> accounts = Accounts(program);
  ASSERT_EQ(accounts.size(), 1u);
  EXPECT_TRUE(
      accounts[0].starts_with("exp(a+b*x)\nObtaining initial estimates\n"
                              "Initial estimates failed, using defaults\nSolving with 1 initial condition(s)\n"))
      << accounts[0];
  EXPECT_TRUE(accounts[0].ends_with("Solution Complete\n\n"));
}

TEST(CatalogueMacro, FindsAModelByItsFormulaOnly) {
  const struct {
    const char *Block, *Shown;  // what the log calls the model
  } kBlocks[] = {
      {"Y = A * X + B\n", "a*x+b"},          {"ID = a*x+b\nY = x*a+b\n", "a*x+b"},  // a user model under that ID
      {"Y = x*a+b\n", "1UserModel"},         {"Y = a*x^6+b*x^5+c*x^4+d*x^3+e*x^2+f*x+g\n", "Sixth order polynomial"},
      {"F1 = x\nY = a*x+b\n", "1UserModel"},
  };
  for (const auto& c : kBlocks) {
    Program program("1 1\n2 3\n3 4\n4 6\n5 8\n6 9\n7 11\n8 11\n9 12\n");
    ASSERT_EQ(program.RunMacro(std::string(kHead) + "B_MODEL\n" + c.Block + "E_MODEL\nE_MACRO\n"), 0);
    const std::vector<std::string> accounts = Accounts(program);
    ASSERT_EQ(accounts.size(), 1u) << c.Block;
    EXPECT_TRUE(accounts[0].starts_with(std::string(c.Shown) + "\n")) << accounts[0];
    const bool user = accounts[0].find("Determining derivative method") != std::string::npos;
    EXPECT_EQ(user, std::string(c.Shown).starts_with("1") || std::string(c.Block).starts_with("ID")) << c.Block;
  }
  Program early;
  early.Folder.Write("data.txt", "1 1\n2 3\n3 4\n");
  ASSERT_EQ(early.RunMacro("B_MACRO\nB_MODEL\nY = a*x+b\nE_MODEL\n" + std::string(kHead + 8) + "E_MACRO\n"), 0);
  EXPECT_TRUE(Accounts(early)[0].starts_with("1UserModel\n"));
}

TEST(CatalogueMacro, TakesStartsFromRulesWhereAssigned) {
  Program program("1 2.1\n2 3.9\n3 8.2\n4 15.7\n5 32.4\n");
  ASSERT_EQ(program.RunMacro(std::string(kHead) + "MaxIterations = 0\nB_MODEL\nY = a*exp(b*x)\n"
                                                  "Assign a = 0.5, Operator = * YMin, Fit = True\n"
                                                  "Assign b = 0.25, Operator = Value, Fit = False\nE_MODEL\nE_MACRO\n"),
            0);
  const std::vector<ModelAnswer> answers = ReadAnswers(program.Folder.Read("out.txt"));
  ASSERT_EQ(answers.size(), 1u);
  EXPECT_EQ(answers[0].Number("b"), 0.25);  // held
  EXPECT_EQ(answers[0].Number("b", 1), 0);
  EXPECT_NE(answers[0].Number("a", 1), 0);
}

TEST(CatalogueMacro, ListsTheModels) {
  Program program;
  EXPECT_EQ(program.Run("--list-models"), 0);
  EXPECT_TRUE(program.Out.starts_with("1\tPolynomial\ta*x+b\ta*x+b\tFirst Order Polynomial\n"));
  EXPECT_EQ(std::count(program.Out.begin(), program.Out.end(), '\n'), 298);
  EXPECT_EQ(program.Run("--list-models 2"), 0);
  EXPECT_EQ(std::count(program.Out.begin(), program.Out.end(), '\n'), 242);
  for (const char* count : {"0", "21", "x", "1.5"}) {
    EXPECT_EQ(program.Run(std::string("--list-models ") + count), 1);
    EXPECT_EQ(program.Err, "The number of variables must be 1 to 20, not '" + std::string(count) + "'.\n");
  }
}

}  // namespace
}  // namespace quorvex
