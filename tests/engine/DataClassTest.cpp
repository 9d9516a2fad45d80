#include <gtest/gtest.h>

#include "engine/DataClass.h"
#include "engine/EqClass.h"
#include "engine/Points.h"

namespace quorvex {
namespace {

TEST(DataClass, KeepsPointsAndTheirLimits) {
  DataClass data;
  data.GenerateTable({{3, -1, 2}, {10, 20, 15}}, {5, 7, -2});
  EXPECT_EQ(data.NumIV(), 2);
  EXPECT_EQ(data.NumTablePoints(), 3U);
  EXPECT_EQ(data.InputXMin(), -1);
  EXPECT_EQ(data.InputXMax(2), 20);
  EXPECT_EQ(data.InputYMin, -2);
  EXPECT_EQ(data.InputYMax, 7);
  EXPECT_EQ(data.XTableData(2, 2), 20);
  EXPECT_EQ(data.CopyDataTo(2).X[2], 15);
  EXPECT_EQ(data.CopyDataTo().Y[1], 7);
  EXPECT_TRUE(data.CopyMaXMinErrorDataTo().Max.empty());
}

TEST(DataClass, MakesErrorBarsOfDeviations) {
  DataClass data;
  data.GenerateTable({{1, 2}}, {10, -4});
  EXPECT_FALSE(data.GenerateErrorTable({1}));
  EXPECT_FALSE(data.GenerateErrorTable({1, 1e308 * 10}));
  EXPECT_FALSE(data.ErrorInfo);
  ASSERT_TRUE(data.GenerateErrorTable({0.5, 2}));
  EXPECT_TRUE(data.ErrorInfo);
  EXPECT_EQ(data.YMaxError(1), 10.5);
  EXPECT_EQ(data.YMinError(2), -6);
  data.GenerateTable({{1}}, {1});  // other points
  EXPECT_FALSE(data.ErrorInfo);
}

TEST(CopyDataTo, HandsOutTheTableOfAModelWhereverItLies) {
  EqClass model{LocaleText()};
  model.SetID("model", {"a*x"});
  model.SetIC(Points({{1, 2, 4}}, {1, 1, 1}));
  EXPECT_TRUE(model.CopyDataTo().Y.empty());
  ASSERT_TRUE(model.GenerateTable({{}}));
  EXPECT_EQ(model.CopyDataTo().X[2], 4);
  ASSERT_TRUE(model.GenerateTable({{1, 3, 3}}));
  EXPECT_EQ(model.CopyDataTo().X[2], 3);
  EXPECT_EQ(model.CopyDataTo().Y.size(), 3U);
}

}  // namespace
}  // namespace quorvex
