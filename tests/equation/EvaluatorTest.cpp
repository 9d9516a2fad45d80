#include <gtest/gtest.h>

#include <optional>

#include "TableFile.h"
#include "equation/Evaluator.h"
#include "equation/Parser.h"

namespace quorvex {
namespace {

// A model of one variable with its coefficients in sorted order, evaluated point by point on one object.
class Model {
 public:
  explicit Model(std::vector<std::string> lines, Dialect dialect = Dialect::OneVariable)
      : expression_(Parser(dialect, {}).Compile(lines)) {
    EXPECT_FALSE(expression_.ParseError) << lines[0] << ": " << expression_.ParseErrorMessage;
  }
  std::optional<double> operator()(std::vector<double> x, std::vector<double> Values = {}) {
    double y = 0;
    if (!evaluator_.Evaluate(expression_, x, Values, Statistics, y)) return std::nullopt;
    return y;
  }
  DataStatistics Statistics;

 private:
  Expression expression_;
  Evaluator evaluator_;
};

TEST(Evaluator, ComputesTheLanguageAndHasNoValueAtAFault) {
  for (const auto& row : TableRows("expression_values.txt", 3)) {
    const std::optional<double> expected = row[2] == "none" ? std::nullopt : std::optional(Number(row[2]));
    EXPECT_EQ(Model({row[0]})({Number(row[1])}), expected) << row[0] << " at " << row[1];
  }
}

TEST(Evaluator, KeepsTheCallersValueAtAFault) {
  const Expression e = Parser(Dialect::OneVariable, {}).Compile({"1/x"});
  Evaluator evaluator;
  double y = 42;
  const double x = 0;
  EXPECT_FALSE(evaluator.Evaluate(e, {&x, 1}, {}, {}, y));
  EXPECT_EQ(y, 42);
}

TEST(Evaluator, TakesCoefficientsInSortedOrder) {
  EXPECT_EQ(Model({"b*x+A"})({3}, {10, 2}), 16);  // A before b
}

// A body in a branch not taken leaves what the evaluation before it has stored, 0 in a new object.
TEST(Evaluator, RecallsASupportingFunctionWithItsStaleValue) {
  Model model({"if(x>0,F1,0)+F1", "x*10"});
  EXPECT_EQ(model({-1}), 0);
  EXPECT_EQ(model({2}), 40);
  EXPECT_EQ(model({-1}), 20);
}

// Jumps are found by name, so coefficients called like the two jump words disturb them, but never the program.
TEST(Evaluator, FaultsWhereACoefficientBreaksTheJumps) {
  EXPECT_FALSE(Model({"if(endif,1,x)"})({5}, {1}));
  EXPECT_FALSE(Model({"a*x"})({5}, {INFINITY}));  // which raises no flag
  EXPECT_FALSE(Model({"if(a,endtrue,x)"})({5}, {1, 7}));
  EXPECT_EQ(Model({"if(a,1,endif)"})({5}, {1, 7}), 7);
}

TEST(Evaluator, NestsUpToAHundredConditions) {
  const auto nested = [](int depth) {
    std::string text = "7";
    for (int i = 0; i < depth; ++i) text = "if(x," + text + ",0)";
    return text;
  };
  EXPECT_EQ(Model({nested(100)})({1}), 7);
  EXPECT_FALSE(Model({nested(101)})({1}));
}

TEST(Evaluator, ReadsTheStatisticsOfTheData) {
  DataStatistics one;
  one.X = {{.InputXMin = 1,
            .InputXMax = 5,
            .XMean = 3,
            .XStd = 1.5,
            .XAtYMin = 2,
            .XAtYMax = 4,
            .YAtXMin = 20,
            .YAtXMax = 10}};
  one.InputYMin = -5;
  one.InputYMax = 25;
  one.YMean = 11;
  one.YStd = 6;
  const std::pair<const char*, double> words[] = {
      {"xmin", 1},  {"xmax", 5},  {"XMean", 3},  {"xstd", 1.5}, {"xatymin", 2},  {"xatymax", 4},  {"xrange", 4},
      {"ymin", -5}, {"ymax", 25}, {"ymean", 11}, {"ystd", 6},   {"yatxmin", 20}, {"yatxmax", 10}, {"yrange", 30}};
  for (const auto& [word, value] : words) {
    Model model({word});
    model.Statistics = one;
    EXPECT_EQ(model({0}), value) << word;
  }
  // With several variables the pattern of "x1min" comes first and takes "x1atymin" too.
  const std::pair<const char*, double> several[] = {{"x1min", 1},     {"x1atymin", 1},  {"x1atymax", 5}, {"x1range", 4},
                                                    {"yatx1min", 20}, {"yatx1max", 10}, {"yrange", 30}};
  for (const auto& [word, value] : several) {
    Model model({word}, Dialect::SeveralVariables);
    model.Statistics = one;
    EXPECT_EQ(model({0}), value) << word;
  }
  EXPECT_FALSE(Model({"x2min"}, Dialect::SeveralVariables)({0}));  // the data have one variable
}

TEST(Evaluator, DrawsRandomNumbersBySeed) {
  Model model({"rnd(x)"});
  const auto first = model({-3}), second = model({1});
  EXPECT_EQ(model({0}), second);
  EXPECT_EQ(model({-3}), first);
  EXPECT_EQ(model({1}), second);
  EXPECT_NE(first, second);
}

}  // namespace
}  // namespace quorvex
