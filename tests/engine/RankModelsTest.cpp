#include <gtest/gtest.h>

#include "engine/EqClass.h"
#include "engine/RankModels.h"

namespace quorvex {
namespace {

// More models than a short sort leaves in place by itself.
TEST(RankModels, KeepsTiesInTheOrderOfTheCollection) {
  for (const int key : {kSortByRSS, kSortByR2, kSortByR2Adjust, kSortByStdErr}) {
    ModelCollection models;
    for (int i = 0; i < 60; ++i) {
      auto model = std::make_unique<EqClass>(LocaleText());
      model->id = std::to_string(i);
      model->Solved = i % 7 != 0;
      model->RSS = model->R2 = model->R2Adjust = model->StdErr = i % 3;
      models.Add(std::to_string(i), std::move(model));
    }
    const std::vector<ModelClass*> ranked = RankModels(models, key);
    ASSERT_EQ(ranked.size(), 51u);
    for (std::size_t i = 1; i < ranked.size(); ++i) {
      const double before = SortKeyValue(*ranked[i - 1], key), value = SortKeyValue(*ranked[i], key);
      if (before == value)
        EXPECT_LT(std::stoi(ranked[i - 1]->id), std::stoi(ranked[i]->id)) << key;
      else
        EXPECT_EQ(before > value, LargestIsBest(key)) << key;
    }
  }
}

// Keys that a model has, smallest first, and those that it has not.
TEST(RankModels, PutsModelsWithoutAKeyLast) {
  ModelCollection models;
  const double errors[] = {NAN, 3, HUGE_VAL, 1, NAN, 2};
  for (std::size_t i = 0; i < std::size(errors); ++i) {
    auto model = std::make_unique<EqClass>(LocaleText());
    model->id = std::to_string(i);
    model->Solved = true;
    model->LeaveOneOut = errors[i];
    if (i == 5) model->CrossValidated = 0.5;  // counts where it is known
    models.Add(std::to_string(i), std::move(model));
  }
  std::string order;
  for (const ModelClass* model : RankModels(models, kSortByCV)) order += model->id;
  EXPECT_EQ(order, "531024");
}

}  // namespace
}  // namespace quorvex
