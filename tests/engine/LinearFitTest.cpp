// The linear road of Fit: built-in models with SolveType 1.

#include <gtest/gtest.h>

#include "NistSets.h"
#include "engine/Points.h"
#include "engine/UserModel.h"

namespace quorvex {
namespace {

std::unique_ptr<ModelClass> BuiltIn(const std::string& ID) {
  std::unique_ptr<ModelClass> model = NewModelFor(ID.find("x1") == std::string::npos ? 1 : 2, LocaleText());
  model->SetID(ID, {ID});
  model->UserType = false;
  model->SolveType = 1;
  return model;
}

std::string LogOfFit(ModelClass& model, const SolveData& data) {
  SolveForm form;
  std::string log;
  EXPECT_EQ(model.Fit(data, {}, log, form), model.Solved);
  std::erase(log, '\r');
  return log;
}

TEST(LinearFit, WritesItsAccount) {
  const auto line = BuiltIn("a*x+b");
  line->Ended = SearchEnd::Paused;  // of an earlier fit, by iterations
  EXPECT_EQ(LogOfFit(*line, Points({{1, 2, 3, 4}}, {3, 5, 7, 9})).substr(0, 98),
            "Beginning LS solution for model a*x+b\nBeginning singular value decomposition.\nSolution successful\n");
  EXPECT_TRUE(line->Solved && line->ErrorInfo);
  EXPECT_EQ(line->Ended, SearchEnd::Converged);
  EXPECT_NEAR(line->Values(1), 2, 1e-13);

  EXPECT_EQ(LogOfFit(*BuiltIn("a*x+b"), Points({{1, 2}}, {3, 5})),
            "Beginning LS solution for model a*x+b\nSolution failed: not enough data points\n\n");
  const auto user = BuiltIn("a*x+b");
  user->UserType = true;
  EXPECT_EQ(LogOfFit(*user, Points({{1, 2, 3}}, {3, 5, 7})),
            "Beginning LS solution for model a*x+b\nUser defined models require nonlinear solver\n"
            "Solution failed\n\n");
  // One distinct X, and an X where a term has no value.
  for (const auto& [ID, x] : {std::pair<std::string, std::vector<double>>{"a*x+b", {2, 2, 2}}, {"a+b/x", {0, 1, 2}}})
    EXPECT_EQ(LogOfFit(*BuiltIn(ID), Points({x}, {3, 5, 7})), "Beginning LS solution for model " + ID +
                                                                  "\nBeginning singular value decomposition.\n"
                                                                  "Solution failed: Numerical Error\n\n");
}

TEST(LinearFit, GivesAnAlmostSingularDesignLargeCoefficients) {
  const auto line = BuiltIn("a*x+b");
  LogOfFit(*line, Points({{1, 1 + 1e-14, 1}}, {1, 2, 1}));
  EXPECT_TRUE(line->Solved);
  EXPECT_GT(std::abs(line->Values(1)), 1e12);
}

// The covariance is that of the textbook's closed form, and a row of weight 4 counts as four rows of weight 1.
TEST(LinearFit, GivesTheCovarianceOfTheWeightedDesign) {
  for (const SolveData& data :
       {Points({{1, 2, 3}}, {1, 4, 4}, {1, 4, 1}), Points({{1, 2, 2, 2, 2, 3}}, {1, 4, 4, 4, 4, 4})}) {
    const auto line = BuiltIn("a*x+b");
    LogOfFit(*line, data);
    EXPECT_NEAR(line->Covariance(1), 0.5, 1e-13);  // 1 / sum of (x - mean)^2
    EXPECT_NEAR(line->Covariance(2), 1.0 / 6 + 4 * 0.5, 1e-13);
  }
}

// NIST StRD, linear least squares; 15 digits are certified. Wampler4's coefficients are up to 200,000 times smaller
// than their standard errors, so that they have so many digits less.
TEST(LinearFit, ReachesTheCertifiedValues) {
  const std::map<std::string, std::pair<std::string, double>> models = {
      // ID, digits of the worst coefficient
      {"Norris", {"a*x+b", 13}},
      {"Pontius", {"a*x^2+b*x+c", 12}},
      {"Longley", {"a*x1+b*x2+c*x3+d*x4+e*x5+f*x6+g", 10}},
      {"Wampler1", {"a*x^5+b*x^4+c*x^3+d*x^2+e*x+f", 9}},
      {"Wampler4", {"a*x^5+b*x^4+c*x^3+d*x^2+e*x+f", 7}}};
  std::printf("%-10s %6s %6s %6s\n", "set", "coef", "s.e.", "RSS");
  int found = 0;
  for (const NistSet& set : NistSets("linear")) {
    const auto row = models.find(set.at("name"));
    if (row == models.end()) continue;  // a line through the origin is not in the catalogue
    ++found;
    SolveData data;
    data.X.resize(static_cast<std::size_t>(std::stoi(set.at("n_indep"))));
    std::ifstream file(TestData("nist/" + set.at("file")));
    for (std::string line; std::getline(file, line);) {
      const std::vector<std::string> fields = Split(line, '\t');
      for (std::size_t v = 0; v < data.X.size(); ++v) data.X[v].push_back(std::stod(fields[v]));
      data.Y.push_back(std::stod(fields.back()));
    }
    data.SD.assign(data.Y.size(), 1.0);
    data.sig = data.SD;
    const auto model = BuiltIn(row->second.first);
    LogOfFit(*model, data);
    ASSERT_TRUE(model->Solved);

    // The certificate has the constant first; the catalogue has it last, and its polynomials the highest power first.
    std::vector<double> certified = Numbers(set.at("certified")), deviations = Numbers(set.at("certified_sd"));
    for (auto* values : {&certified, &deviations}) {
      if (data.X.size() == 1)
        std::reverse(values->begin(), values->end());
      else
        std::rotate(values->begin(), values->begin() + 1, values->end());
    }
    double coefficients = 15, errors = 15;
    for (int i = 1; i <= model->NumDependentVar(); ++i) {
      const auto index = static_cast<std::size_t>(i - 1);
      coefficients = std::min(coefficients, CorrectDigits(model->Values(i), certified[index], 15));
      errors = std::min(errors, CorrectDigits(model->StandardError(i), deviations[index], 15));
    }
    const double rss = CorrectDigits(model->RSS, std::stod(set.at("certified_rss")), 15);
    std::printf("%-10s %6.1f %6.1f %6.1f\n", set.at("name").c_str(), coefficients, errors, rss);
    EXPECT_GE(coefficients, row->second.second) << set.at("name");
    EXPECT_GE(errors, 9) << set.at("name");
    EXPECT_GE(rss, 12) << set.at("name");
  }
  EXPECT_EQ(found, 5);
}

}  // namespace
}  // namespace quorvex
