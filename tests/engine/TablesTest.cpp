#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <span>

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

TEST(GenerateTable, HasEveryInputPointOfSeveralVariables) {
  SolveData data = Line();
  data.X.push_back({5, 4, 3, 2, 1});
  const auto model = ModelOf("a*x1+b*x2", data, {1, 100});
  ASSERT_TRUE(model->GenerateTable({TableRange()}));
  ASSERT_EQ(model->NumTablePoints(), 5u);  // every point, equal ones too
  EXPECT_EQ(model->YTableData(3), 302);
}

TEST(GenerateTable, SpansASurface) {
  const SolveData data = Points({{3, 1, 9, 1, 3}, {50, 20, 40, 20, 30}}, {1, 2, 3, 4, 5});
  const auto model = ModelOf("a*x1+b*x2", data, {1, 1000});
  const struct {
    const char* what;
    TableRange x1, x2;
    bool extrapolate;
    std::vector<double> points1, points2;  // the mesh is all their pairs
  } kCases[] = {
      {"within the input", {3, 9, 2}, {30, 50, 3}, false, {3, 9}, {30, 40, 50}},
      {"cut to the input", {0, 5, 3}, {40, 90, 2}, false, {1, 3, 5}, {40, 50}},
      {"beside the input", {-4, 0, 2}, {60, 70, 3}, false, {1, 9}, {20, 35, 50}},
      {"beyond the input", {0, 5, 2}, {10, 90, 3}, true, {0, 5}, {10, 50, 90}},
      {"one axis logarithmic", {1, 9, 3, true}, {20, 40, 2}, false, {1, 3, 9}, {20, 40}},
      {"the other one", {1, 9, 3}, {1, 100, 3, true}, true, {1, 5, 9}, {1, 10, 100}},
      {"at the input's values", {}, {}, false, {1, 3, 9}, {20, 30, 40, 50}},
      {"whatever the limits are", {4, 5, kInputPoints}, {}, true, {1, 3, 9}, {20, 30, 40, 50}},
      {"one at the input's values", {}, {0, 10, 2}, true, {1, 3, 9}, {0, 10}},
  };
  for (const auto& c : kCases) {
    ASSERT_TRUE(model->GenerateTable({c.x1, c.x2}, c.extrapolate)) << c.what;
    ASSERT_EQ(model->NumTablePoints(), c.points1.size() * c.points2.size()) << c.what;
    std::size_t i = 1;
    for (const double x1 : c.points1)
      for (const double x2 : c.points2) {
        EXPECT_NEAR(model->XTableData(i, 1), x1, 4e-15) << c.what;
        EXPECT_NEAR(model->XTableData(i, 2), x2, 4e-15) << c.what;
        EXPECT_NEAR(model->YTableData(i++), x1 + 1000 * x2, 4e-12) << c.what;
      }
  }
}

TEST(GenerateTable, TakesUpTo99ValuesOfEachVariable) {
  SolveData data = Points({{}, {}}, {});
  // X1 has 150 values, from 149 to 0, X2 has 99, and each comes twice.
  for (int i = 0; i < 300; ++i) {
    data.X[0].push_back(149 - i % 150);
    data.X[1].push_back(i % 99);
  }
  data.Y.assign(300, 1);
  data.SD = data.sig = data.Y;
  const auto model = ModelOf("a*x1+b*x2", data, {1, 0});
  ASSERT_TRUE(model->GenerateTable({{}, {}}));
  ASSERT_EQ(model->NumTablePoints(), 99u * 99u);
  for (std::size_t i = 0; i < 99; ++i) {
    EXPECT_EQ(model->XTableData(i + 1, 2), static_cast<double>(i));
    EXPECT_EQ(model->XTableData(99 * i + 1, 1), std::floor(static_cast<double>(i) * 149 / 98));
  }
}

// Points are evaluated many at a time where the model allows it, which the second one does not: the blocks of a mesh
// meet both of its branches.
TEST(GenerateTable, HasTheValuesOfPointsTakenOneByOne) {
  for (const char* text : {"a*exp(-x1/7)+b*x2^1.5", "if(x1+x2>9,a*ln(x1+x2),b*x2)"}) {
    const auto model = ModelOf(text, Points({{0, 5, 10}, {0, 5, 9}}, {1, 2, 3}), {1.3, 0.7});
    model->UserType = true;
    ASSERT_TRUE(model->GenerateTable({{0, 10, 31}, {0, 9, 29}}));
    for (std::size_t i = 1; i <= 31 * 29; ++i) {
      double y = 0;
      ASSERT_TRUE(model->Evaluate(std::array{model->XTableData(i, 1), model->XTableData(i, 2)}, y));
      EXPECT_EQ(model->YTableData(i), y) << text << ' ' << i;
    }
  }
}

TEST(GenerateTable, HasNoMeshOverASingleValue) {
  const auto model = ModelOf("a*x1+b*x2", Points({{1, 2, 3}, {7, 7, 7}}, {1, 2, 3}), {1, 1});
  ASSERT_TRUE(model->GenerateTable({{}, {0, 7, 2}}, true));
  EXPECT_FALSE(model->GenerateTable({{}, {}}));
  EXPECT_EQ(model->NumTablePoints(), 0u);
  EXPECT_TRUE(model->CopyDataTo(2).X.empty());
}

TEST(GenerateTable, IsEmptyWhereANodeHasNoValue) {
  const auto model = ModelOf("a/(x1-x2)+b", Points({{5, 6, 7}, {1, 2, 3}}, {1, 2, 3}), {1, 0});
  const TableRange sound{5, 7, 3};
  for (const TableRange& x2 : {TableRange{1, 7, 4}, TableRange{-1, 1, 3, true}, TableRange{1, 2, 1}}) {
    ASSERT_TRUE(model->GenerateTable({sound, {1, 3, 3}}));
    EXPECT_FALSE(model->GenerateTable({sound, x2}, true));
    EXPECT_EQ(model->NumTablePoints(), 0u);
  }
}

TEST(GenerateTable, TellsOfValuesThatAreNotPositive) {
  const auto model = ModelOf("a*x1+b*x2", Points({{1, 2, 3}, {1, 2, 3}}, {1, 2, 3}), {1, 1});
  const struct {
    TableRange x1, x2;
    bool negative;
  } kCases[] = {
      {{1, 2, 2}, {1, 2, 2}, false},   {{-1, 2, 2}, {1, 2, 2}, true},  // 0 at one corner
      {{1, 2, 2}, {0.5, 2, 2}, false}, {{1, 2, 2}, {-2, 2, 2}, true}, {{1, 2, 2}, {-2, 2, 1}, false},  // no table
  };
  for (const auto& c : kCases) {
    model->GenerateTable({c.x1, c.x2}, true);
    EXPECT_EQ(model->ZIsNegative, c.negative) << c.x1.Min << ' ' << c.x2.Min;
  }
}

TEST(GenerateErrorTable, HasTheValueAtEachInputPoint) {
  const SolveData data = Points({{3, 1, 3, 2}, {5, 4, 5, 0}}, {54, 40, 52, 3});
  const auto model = ModelOf("a*x1+b*x2", data, {1, 10});
  ASSERT_TRUE(model->GenerateErrorTable());
  const std::span<const double> fitted = model->FittedData();
  EXPECT_EQ(std::vector<double>(fitted.begin(), fitted.end()), (std::vector<double>{53, 41, 53, 2}));
  const auto residuals = model->GenerateResiduals(data);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(fitted[i], model->InputY(i + 1) - (*residuals)[i]);
  ASSERT_TRUE(model->GenerateTable({{}, {}}));
  EXPECT_EQ(model->FittedData().size(), 4u) << "a surface has a table of its own";

  EXPECT_TRUE(model->CopyTo()->FittedData().empty());
  model->CopyInputDataFrom(model->CopyInputDataTo());
  EXPECT_TRUE(model->FittedData().empty());

  const auto pole = ModelOf("a/(x1-b)", data, {1, 0});
  ASSERT_TRUE(pole->GenerateErrorTable());
  pole->SetValue(2, 2);  // at the last of the points
  EXPECT_FALSE(pole->GenerateErrorTable());
  EXPECT_TRUE(pole->FittedData().empty());
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
