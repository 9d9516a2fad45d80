#include <gtest/gtest.h>

#include "engine/LoadModelCatalog.h"

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

}  // namespace
}  // namespace quorvex
