#include <gtest/gtest.h>

#include <cmath>

#include "diagnosis/Ranking.h"
#include "diagnosis/Samples.h"
#include "engine/RankModels.h"
#include "engine/UserModel.h"

namespace quorvex {
namespace {

using Strings = std::vector<std::string>;

// A line through 10 points, of that sum of squares.
ModelClass& AddLine(ModelCollection& models, const std::string& id, double rss, double rst = 7) {
  std::unique_ptr<ModelClass> model = CompileModel(id, {"a+b*x"}, 1, LocaleText());
  model->Solved = true;
  model->RssNorm = rss;
  model->RST = rst;
  model->DOFError = 8;
  model->Statistics.InputYMax = 1;
  return *models.Add(id, std::move(model));
}

// Of equally many coefficients, AICc differs by n ln of the quotient of the sums.
TEST(Ranking, GroupsWhatLiesWithinTwoOfTheBestOfItsGroup) {
  ModelCollection models;
  const double deltas[] = {0, 1.5, 3, 4.5, 5.5};
  for (const double delta : deltas) AddLine(models, "m" + std::to_string(delta), std::exp(delta / 10));
  const std::vector<Ranking> rankings = RankingOf(RankModels(models, kSortByAICc));
  const int groups[] = {1, 1, 2, 2, 3};
  double sum = 0;
  for (const double delta : deltas) sum += std::exp(-delta / 2);
  for (std::size_t i = 0; i < 5; ++i) {
    EXPECT_NEAR(rankings[i].DeltaAICc, deltas[i], 1e-12);
    EXPECT_NEAR(rankings[i].AkaikeWeight, std::exp(-deltas[i] / 2) / sum, 1e-14);
    EXPECT_EQ(rankings[i].Group, groups[i]) << i;
    EXPECT_EQ(rankings[i].SameAs, 0);
  }
  EXPECT_EQ(RankingWarnings(RankModels(models, kSortByAICc), 10), Strings());
  EXPECT_EQ(RankingWarnings(RankModels(models, kSortByAICc), 11),
            Strings{"11 models were tried on 10 points: the best of so many fits well by chance, too."});
}

TEST(Ranking, PutsExactFitsFirstAndComparesModelsOfTheSameDataAlone) {
  ModelCollection models;
  AddLine(models, "poor", 2);
  AddLine(models, "elsewhere", 1, 8);
  AddLine(models, "few points", 3).DOFError = 2;
  AddLine(models, "exact", 0);
  AddLine(models, "exact, too", 0);
  models.Find("few points")->RST = 9;
  models.Find("exact, too")->FailedParts = 2;
  models.Find("poor")->Loss = LossKind::Huber;
  const std::vector<ModelClass*> ranked = RankModels(models, kSortByAICc);
  Strings names;
  for (const ModelClass* model : ranked) names.push_back(model->id);
  EXPECT_EQ(names, (Strings{"exact", "exact, too", "elsewhere", "poor", "few points"}));
  const std::vector<Ranking> rankings = RankingOf(ranked);
  const double inf = HUGE_VAL;
  const struct {
    double Delta, Weight;
    int Group;
  } expected[] = {{0, 0.5, 1}, {0, 0.5, 1}, {0, 1, 3}, {inf, 0, 2}};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(rankings[i].DeltaAICc, expected[i].Delta) << i;
    EXPECT_EQ(rankings[i].AkaikeWeight, expected[i].Weight) << i;
    EXPECT_EQ(rankings[i].Group, expected[i].Group) << i;
  }
  EXPECT_TRUE(std::isnan(rankings[4].AICc) && std::isnan(rankings[4].DeltaAICc) &&
              std::isnan(rankings[4].AkaikeWeight));
  EXPECT_EQ(rankings[4].Group, 0);
  EXPECT_EQ(
      RankingWarnings(ranked, 5),
      (Strings{"Not all of these models were fitted to the same data: AICc, BIC and errors of different data don't "
               "compare.",
               "Of 5 models 1 has too few points for an AICc: ranks by it, Akaike weights and groups compare the "
               "others alone.",
               "AICc, BIC and cross-validation count squares, outliers included: of fits with a robust loss they say "
               "little.",
               "exact, too has no cross-validated error: without some of the points, 2 parts, it finds no "
               "answer."}));
  EXPECT_TRUE(RankingOf({}).empty());
  EXPECT_TRUE(RankingWarnings({}, 3).empty());
}

TEST(Ranking, TellsTheSameModelInOtherClothes) {
  const SolveData data = Sample("puromycin_treated.txt", '\t');
  ModelCollection models;
  for (const char* formula : {"a*x/(b+x)", "x/(a+b*x)", "a+b*x", "a*ln(b*x)", "1/(a+b/x)", "a+b*ln(x)", "a+b*(x-1)"}) {
    std::unique_ptr<ModelClass> model = CompileModel(formula, {formula}, 1, LocaleText());
    Settings settings;
    settings.TryHarder = true;
    std::string log;
    SolveForm form;
    EXPECT_TRUE(model->Fit(data, settings, log, form)) << log;
    models.Add(formula, std::move(model));
  }
  const auto sameAs = [&](int key) {
    Strings same;
    const std::vector<ModelClass*> ranked = RankModels(models, key);
    const std::vector<Ranking> rankings = RankingOf(ranked);
    double sum = 0;
    for (std::size_t i = 0; i < ranked.size(); ++i) {
      if (rankings[i].SameAs == 0) sum += rankings[i].AkaikeWeight;
      if (rankings[i].SameAs > 0)
        same.push_back(ranked[i]->id + " = " + ranked[static_cast<std::size_t>(rankings[i].SameAs - 1)]->id);
    }
    EXPECT_NEAR(sum, 1, 1e-6);
    std::ranges::sort(same);
    return same.size();
  };
  for (const int key : {kSortByRSS, kSortByAICc, kSortByBIC}) EXPECT_EQ(sameAs(key), 4u);
}

}  // namespace
}  // namespace quorvex
