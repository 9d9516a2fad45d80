#include <gtest/gtest.h>

#include "engine/LoadModelCatalog.h"
#include "equation/Expression.h"

namespace quorvex {
namespace {

TEST(LoadModelCatalog, KeepsTheModelsThatAreThere) {
  ModelCollection models;
  LoadModelCatalog(models, 1, {});
  ASSERT_EQ(models.size(), 298u);
  ModelClass* const line = models.begin()->get();
  line->Solve = true;
  LoadModelCatalog(models, 1, {});
  LoadModelCatalog(models, 0, {});
  LoadModelCatalog(models, 21, {});
  EXPECT_EQ(models.size(), 298u);
  EXPECT_EQ(models.begin()->get(), line);
  EXPECT_TRUE(line->Solve);
}

// What a built-in model says of itself before its text is compiled is what the text says.
TEST(LoadModelCatalog, KnowsOfAModelWhatItsTextSays) {
  for (int n = 1; n <= kMostIndependentVariables; ++n) {
    ModelCollection models;
    LoadModelCatalog(models, n, {});
    for (const auto& model : models) {
      std::vector<std::string> names;
      for (int i = 1; i <= model->NumDependentVar(); ++i) names.push_back(model->Variables(i));
      const int variables = model->NumIndependentVar();
      const Expression& compiled = model->Compiled();
      EXPECT_EQ(names, compiled.CoefficientNames) << model->id;
      EXPECT_EQ(variables, compiled.NumIndependentVar) << model->id;
      EXPECT_TRUE(compiled.IsValidEquation && compiled.VarsInOrder == (n > 1)) << model->id;
    }
  }
}

}  // namespace
}  // namespace quorvex
