#include <gtest/gtest.h>

#include <cmath>

#include "calculator/Curves.h"
#include "calculator/Generators.h"
#include "engine/EqClass.h"
#include "engine/InterpClass.h"

namespace quorvex {
namespace {

LocaleText Comma() { return {.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.'}; }

template <typename T>
std::string Message(const Result<T>& result) {
  return result ? "" : result.error();
}

SolveData Points() {
  SolveData data;
  data.X = {{1, 2, 4}};
  data.Y = {1, 4, 16};
  return data;
}

PlotSeries Model(const std::string& text) {
  auto model = std::make_unique<EqClass>(LocaleText());
  model->SetID(text, {text});
  model->SetIC(Points());
  PlotSeries series(std::move(model));
  series.Style().LegendText = "m";
  return series;
}

PlotSeries Interpolation() {
  InterpClass curve(kPolynomial);
  std::string log;
  EXPECT_TRUE(curve.Fit(Points(), log));
  PlotSeries series(std::move(curve));
  series.Style().LegendText = "p";
  return series;
}

TEST(DistributionCurve, ChecksItsFieldsInTheirOrder) {
  const struct {
    DistributionCurve Fields;
    const char* Message;
  } cases[] = {
      {{"", "", "", ""}, "Please enter a valid number for the Standard Deviation of the distribution."},
      {{"0", "0", "9", "3"}, "Please enter a valid number for the Standard Deviation of the distribution."},
      {{"1", "x", "", ""}, "Please enter a valid number for the Mean of the distribution."},
      {{"1", "0", "3.5", ""}, "Please enter a valid number for the total number of points."},
      {{"1", "0", "1e9", "3"}, "Please enter a valid number for the total number of points."},
      {{"1", "0", "2", ""}, "The total number of points must be > 2."},
      {{"1", "0", "3", "nan"}, "Please enter a valid number the range of Standard Deviations to plot."},
      {{"1", "0", "3", "1"}, "The range of Standard Deviations must be > 1."},
      {{"1e300", "0", "3", "1e300"}, "Error creating Normal Distribution."},
      {{"1e-300", "1", "3", "3"}, "Error creating Normal Distribution."},
      {{"1", "0", "3", "1.5"}, ""},
  };
  for (const auto& c : cases) EXPECT_EQ(Message(c.Fields.Make({})), c.Message);
}

TEST(DistributionCurve, IsTheDensityAboutTheMean) {
  const auto three = DistributionCurve{"0,5", "2", "3", "2"}.Make(Comma());
  ASSERT_TRUE(three);
  EXPECT_EQ(three->Style().LegendText, "ND: Avg = 2, SDev = 0,5");
  EXPECT_EQ(XOf(*three), (Column{1, 2, 3}));
  const double top = 1 / (std::sqrt(6.28318) * 0.5);
  EXPECT_DOUBLE_EQ(YOf(*three)[1], top);
  EXPECT_DOUBLE_EQ(YOf(*three)[0], top * std::exp(-2));
  EXPECT_EQ(YOf(*three)[0], YOf(*three)[2]);
  // The sum over a wide range is the whole area, but for the six digits of 2 pi.
  const auto wide = DistributionCurve{"1", "0", "201", "10"}.Make({});
  double area = 0;
  for (const double y : YOf(*wide)) area += y * 0.1;
  EXPECT_NEAR(area, std::sqrt(2 * std::acos(-1) / 6.28318), 1e-14);
}

TEST(ExpressionCurve, ChecksItsFieldsInTheirOrder) {
  const std::string invalid = "The equation you entered is not valid. ", syntax = "Please check the equation syntax.";
  const struct {
    ExpressionCurve Fields;
    std::string Message;
  } cases[] = {
      {{" ", "", "", ""}, "Please enter a valid expression."},
      {{"x", "", "", ""}, "Please enter a valid number for X min."},
      {{"x", "0", "", ""}, "Please enter a number for X max."},
      {{"x", "1", "1", ""}, "The value of X Max must be larger than X Min."},
      {{"x", "0", "1", "a"}, "Please enter the number of samples."},
      {{"x", "0", "1", "2"}, "The number of samples must be larger then 2."},
      {{"x", "0", "1", "65536"}, "The number of samples must be less than 65,536."},
      {{"a*x", "0", "1", "9"},
       invalid + "It appears to contain variable coefficients, which are not allowed in the calculator. " + syntax},
      {{"3", "0", "1", "9"}, invalid + "It does not appear to contain the independent variable 'X'. " + syntax},
      {{"sin(x", "0", "1", "9"}, invalid + syntax},
      {{"x-xmean", "0", "1", "9"}, invalid + syntax},
      {{"1/x", "0", "1", "9"}, "An Error occured while evaluating the equation. Please check your input."},
      {{"x", "-1e308", "1e308", "9"}, "An Error occured while evaluating the equation. Please check your input."},
      {{"X", "0", "1", "65535"}, ""},
  };
  for (const auto& c : cases) EXPECT_EQ(Message(c.Fields.Make({})), c.Message) << c.Fields.Function;
  const auto curve = ExpressionCurve{"X^2+0,5", "0", "2,5", "6"}.Make(Comma());
  ASSERT_TRUE(curve);
  EXPECT_EQ(curve->Style().LegendText, "X^2+0,5");
  EXPECT_EQ(XOf(*curve), (Column{0, 0.5, 1, 1.5, 2, 2.5}));
  EXPECT_EQ(YOf(*curve), (Column{0.5, 0.75, 1.5, 2.75, 4.5, 6.75}));
}

TEST(SampledCurve, ChecksItsFieldsInTheirOrder) {
  const std::string only = "Interpolation models can only be sampled within the range of input data. ";
  const std::string failed =
      "An error occurred during the sampling operation. Make sure the curve is valid within the entered range of "
      "values.";
  const PlotSeries line = Model("2*x"), pole = Model("1/(x-4)"), spline = Interpolation();
  const struct {
    const PlotSeries& Equation;
    SampledCurve Fields;
    std::string Message;
  } cases[] = {
      {line, {"", "", "2"}, "Please enter a valid number for the number of samples [3-65536]."},
      {line, {"", "", "65537"}, "Please enter a valid number for the number of samples [3-65536]."},
      {line, {"", "", "3"}, "Please enter a valid number for XMax."},
      {line, {"", "1", "3"}, "Please enter a valid number for XMin."},
      {line, {"1", "1", "3"}, "Xmax must be greate than XMin."},
      {line, {"-1e308", "1e308", "3"}, "Invalid entry, please check your input."},
      {spline, {"0.9", "4", "3"}, only + "XMin is too small."},
      {spline, {"1", "4.1", "3"}, only + "XMax is too large."},
      {pole, {"3", "5", "3"}, failed},
      {pole, {"", "", "", true}, failed},
      {line, {"-9", "9", "65536"}, ""},
  };
  for (const auto& c : cases) EXPECT_EQ(Message(c.Fields.Make(c.Equation, {})), c.Message);
}

TEST(SampledCurve, HasTheValuesOfItsEquation) {
  Settings settings;
  settings.Set("pointsperplot", "7");
  const SampledCurve defaults = SampledCurve::Defaults(Interpolation(), settings, Comma());
  EXPECT_EQ(defaults.XMin + ' ' + defaults.XMax + ' ' + defaults.Samples, "1 4 7");
  const auto samples = defaults.Make(Interpolation(), Comma());
  ASSERT_TRUE(samples);
  EXPECT_EQ(samples->Style().LegendText, "Sample(p)");
  EXPECT_EQ(XOf(*samples), (Column{1, 1.5, 2, 2.5, 3, 3.5, 4}));
  for (std::size_t i = 0; i < 7; ++i) EXPECT_NEAR(YOf(*samples)[i], std::pow(XOf(*samples)[i], 2), 1e-14);

  const PlotSeries model = Model("2*x");
  const auto fitted = SampledCurve{"", "", "", true}.Make(model, {});
  ASSERT_TRUE(fitted);
  EXPECT_EQ(XOf(*fitted), (Column{1, 2, 4}));
  EXPECT_EQ(YOf(*fitted), (Column{2, 4, 8}));
  EXPECT_EQ(model.NumTablePoints(), 0U) << "The series of the plot keeps its own table.";
}

}  // namespace
}  // namespace quorvex
