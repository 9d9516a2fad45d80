#include <gtest/gtest.h>

#include "TableFile.h"
#include "engine/Points.h"
#include "engine/UserModel.h"

namespace quorvex {
namespace {

// A model without a fit: its coefficients as they are given, its statistics and input from the data.
std::unique_ptr<ModelClass> ModelOf(const std::string& text, const SolveData& data, std::vector<double> values) {
  std::unique_ptr<ModelClass> model = NewModelFor(data.X.size(), LocaleText());
  model->SetID("model", {text});
  EXPECT_TRUE(model->IsValidEquation()) << text;
  model->SetIC(data);
  for (std::size_t i = 0; i < values.size(); ++i) model->SetValue(static_cast<int>(i) + 1, values[i]);
  return model;
}

SolveData Line() { return Points({{1, 2, 2, 3, 10}}, {1, 2, 5, 7, 30}); }

std::vector<double> XOf(const ModelClass& model) {
  std::vector<double> x;
  for (std::size_t i = 1; i <= model.NumTablePoints(); ++i) x.push_back(model.XTableData(i));
  return x;
}

TEST(GenerateTable, PlacesItsPoints) {
  const auto model = ModelOf("a*x+b", Line(), {2, -1});
  const struct {
    TableRange range;
    bool extrapolate;
    std::vector<double> x;
  } kCases[] = {
      {{}, false, {1, 2, 3, 10}},  // the input, runs of equal X once
      {{0, 20, 4}, true, {0, 20 / 3.0, 40 / 3.0, 20}},
      {{0, 0.9, 4}, true, {0, 0.9 / 3, 2 * (0.9 / 3), 0.9}},  // which 3 * (0.9 / 3) misses
      {{0, 20, 4}, false, {1, 4, 7, 10}},
      {{4, 6, 3}, false, {4, 5, 6}},
      {{11, 20, 4}, false, {1, 4, 7, 10}},  // nothing left between the limits
      {{10, 20, 4}, false, {1, 4, 7, 10}},  // nor is a single place
      {{20, 0, 3}, true, {20, 10, 0}},
      {{1, 8, 4, true}, false, {1, 2, 4, 8}},
  };
  for (const auto& c : kCases) {
    ASSERT_TRUE(model->GenerateTable({c.range}, c.extrapolate));
    ASSERT_EQ(model->NumTablePoints(), c.x.size());
    for (std::size_t i = 0; i < c.x.size(); ++i) {
      EXPECT_NEAR(model->XTableData(i + 1), c.x[i], 4e-15);
      EXPECT_EQ(model->YTableData(i + 1), 2 * model->XTableData(i + 1) - 1);
    }
    EXPECT_EQ(XOf(*model).back(), c.x.back());
  }
}

TEST(GenerateTable, IsEmptyWhereAPointHasNoValue) {
  const auto model = ModelOf("a/x+b", Line(), {1, 0});
  for (const TableRange& range : {TableRange{-1, 1, 3}, TableRange{0, 1, 3, true}, TableRange{1, 2, 1},
                                  TableRange{1, 2, 0}, TableRange{-1, 1, 3, true}}) {
    ASSERT_TRUE(model->GenerateTable({TableRange()}));
    EXPECT_FALSE(model->GenerateTable({range}, true));
    EXPECT_EQ(model->NumTablePoints(), 0u);
  }
}

TEST(GenerateTable, SpansASurface) {
  SolveData data = Line();
  data.X.push_back({5, 4, 3, 2, 1});
  const auto model = ModelOf("a*x1+b*x2", data, {1, 100});
  ASSERT_TRUE(model->GenerateTable({TableRange()}));
  ASSERT_EQ(model->NumTablePoints(), 5u);  // every point, equal ones too
  EXPECT_EQ(model->YTableData(3), 302);
  ASSERT_TRUE(model->GenerateTable({{2, 4, 2}, {1, 3, 3}}));
  const double kX1[] = {2, 2, 2, 4, 4, 4}, kX2[] = {1, 2, 3, 1, 2, 3};
  ASSERT_EQ(model->NumTablePoints(), 6u);
  for (std::size_t i = 0; i < 6; ++i) {
    EXPECT_EQ(model->XTableData(i + 1, 1), kX1[i]);
    EXPECT_EQ(model->XTableData(i + 1, 2), kX2[i]);
    EXPECT_EQ(model->YTableData(i + 1), kX1[i] + 100 * kX2[i]);
  }
}

TEST(GenerateResiduals, AreObservedMinusModel) {
  const SolveData data = Line();
  EXPECT_EQ(ModelOf("a*x+b", data, {2, -1})->GenerateResiduals(data), (std::vector<double>{0, -1, 2, 2, 11}));
  EXPECT_EQ(ModelOf("ln(a-x)+b", data, {3, 0})->GenerateResiduals(data), std::nullopt);
}

TEST(GenerateQQTable, SetsResidualsAgainstNormalQuantiles) {
  const SolveData data = Line();
  const auto model = ModelOf("a*x+b", data, {2, -1});
  for (const double StdErr : {0.0, 2.0}) {
    model->StdErr = StdErr;
    const auto table = model->GenerateQQTable(data);
    ASSERT_TRUE(table);
    const double unit = StdErr == 0 ? 1 : StdErr;
    EXPECT_EQ(table->Sorted, (std::vector<double>{-1 / unit, 0, 2 / unit, 2 / unit, 11 / unit}));
    const double kQuantiles[] = {-1.2815515655446004, -0.52440051270804082, 0, 0.52440051270804082,
                                 1.2815515655446004};  // of 0.1, 0.3, 0.5, 0.7, 0.9
    for (std::size_t i = 0; i < 5; ++i) EXPECT_NEAR(table->Quantiles[i], kQuantiles[i], 1e-15);
  }
}

TEST(GetRoots, FindsWhereTheModelTakesAValue) {
  for (const auto& row : TableRows("roots.txt", 6)) {
    const auto model = ModelOf(row[0], Line(), {1});
    const auto roots = model->GetRoots(Number(row[1]), Number(row[2]), Number(row[3]), std::stoi(row[4]));
    const std::vector<double> expected = Numbers(row[5]);
    ASSERT_EQ(roots.size(), expected.size()) << row[0];
    for (std::size_t i = 0; i < roots.size(); ++i) EXPECT_NEAR(roots[i], expected[i], 5e-15) << row[0];
  }
}

TEST(GetRoots, VariesOneOfSeveralVariables) {
  SolveData data = Line();
  data.X.push_back({5, 4, 3, 2, 1});
  const auto model = ModelOf("a*x1-b*x2", data, {2, 3});
  const auto first = model->GetRoots(0, 10, 0, 7, {0, 4}, 1);
  const auto second = model->GetRoots(0, 10, 0, 7, {3, 0}, 2);
  ASSERT_EQ(first.size(), 1u);
  ASSERT_EQ(second.size(), 1u);
  EXPECT_NEAR(first[0], 6, 1e-14);
  EXPECT_NEAR(second[0], 2, 1e-14);
}

TEST(CopyTo, SharesInput) {
  const auto model = ModelOf("a*x+b", Line(), {2, -1});
  const auto twin = model->CopyTo();
  EXPECT_EQ(twin->CopyInputDataTo(), model->CopyInputDataTo());
  ASSERT_TRUE(twin->GenerateTable({TableRange()}));
  twin->CopyInputDataFrom(model->CopyInputDataTo());  // another input has no table yet
  EXPECT_EQ(twin->NumTablePoints(), 0u);
  EXPECT_EQ(*twin->CopyInputDataTo(), (InputPoints{{{1, 2, 3, 10}}, {1, 2, 7, 30}}));
}

}  // namespace
}  // namespace quorvex
