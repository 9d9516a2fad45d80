#include <gtest/gtest.h>

#include <algorithm>
#include <bit>

#include "Compile.h"
#include "TableFile.h"
#include "core/FaultFlags.h"
#include "equation/BlockProgram.h"

namespace quorvex {
namespace {

std::uint64_t BitsOfDouble(double x) { return std::bit_cast<std::uint64_t>(x); }

// A model ready for its gradient at given points.
class Model {
 public:
  Model(const std::vector<std::string>& lines, std::size_t variables, const std::map<std::string, double>& values)
      : expression_(Compile(lines, variables == 1 ? Dialect::OneVariable : Dialect::SeveralVariables)),
        program_(expression_) {
    EXPECT_TRUE(program_.Supported() && program_.HasGradient()) << lines[0];
    for (const std::string& name : expression_.CoefficientNames) values_.push_back(values.at(name));
  }

  const std::vector<std::string>& Names() const { return expression_.CoefficientNames; }

  struct Answer {
    bool Went;
    std::vector<double> Y;
    std::vector<std::vector<double>> Slopes;  // per coefficient; empty where it was not wanted
  };

  // `points` has a column for each variable; the coefficients in `held` are not asked for.
  Answer GradientAt(const std::vector<std::vector<double>>& points, const std::vector<bool>& held) {
    const std::size_t n = points[0].size();
    std::vector<const double*> columns;
    for (const auto& column : points) columns.push_back(column.data());
    Answer answer{true, std::vector<double>(n), std::vector<std::vector<double>>(values_.size())};
    EXPECT_TRUE(program_.Evaluate(columns, n, values_, statistics_, answer.Y.data(), BlockProgram::Next::Gradient));
    std::vector<const double*> dyda;
    for (std::size_t c = 0; c < values_.size(); ++c) dyda.push_back(held[c] ? nullptr : answer.Y.data());
    ClearFaultFlags();
    program_.Gradient(dyda.data());
    answer.Went = !FaultFlagsRaised();
    for (std::size_t c = 0; c < values_.size(); ++c)
      if (!held[c]) answer.Slopes[c].assign(dyda[c], dyda[c] + n);
    return answer;
  }

  Answer GradientAt(const std::vector<std::vector<double>>& points) {
    return GradientAt(points, std::vector<bool>(values_.size()));
  }

 private:
  Expression expression_;
  BlockProgram program_;
  std::vector<double> values_;
  DataStatistics statistics_{};
};

struct Case {
  std::vector<std::string> Lines;
  std::size_t Variables;
  std::map<std::string, double> Values;
  std::vector<std::vector<double>> X;  // column by column
  std::vector<double> Y;
  std::map<std::string, std::vector<double>> Slopes;
};

// Of gradients.txt; its generator tells how it is made.
std::vector<Case> Cases() {
  std::vector<Case> cases;
  std::ifstream table(TestData("gradients.txt"));
  for (std::string line; std::getline(table, line);) {
    const std::vector<std::string> cells = Split(line, '\t');
    Case c{Split(cells[0], '|'), std::stoul(cells[1]), {}, {}, {}, {}};
    std::vector<std::string> names;
    for (const std::string& word : Split(cells[2], ' ')) {
      const std::size_t equals = word.find('=');
      names.push_back(word.substr(0, equals));
      c.Values[names.back()] = Number(word.substr(equals + 1));
    }
    c.X.resize(c.Variables);
    for (std::size_t i = 3; i < cells.size(); ++i) {
      const std::vector<double> numbers = Numbers(cells[i]);
      for (std::size_t v = 0; v < c.Variables; ++v) c.X[v].push_back(numbers[v]);
      c.Y.push_back(numbers[c.Variables]);
      for (std::size_t k = 0; k < names.size(); ++k) c.Slopes[names[k]].push_back(numbers[c.Variables + 1 + k]);
    }
    cases.push_back(c);
  }
  EXPECT_GT(cases.size(), 60u);
  return cases;
}

TEST(BlockGradient, AgreesWithTheRulesOfCalculusAtSixtyDigits) {
  for (const Case& c : Cases()) {
    Model model(c.Lines, c.Variables, c.Values);
    const auto answer = model.GradientAt(c.X);
    ASSERT_TRUE(answer.Went) << c.Lines[0];
    for (std::size_t i = 0; i < c.Y.size(); ++i) {
      // The model is the one that is meant; gammaln has nine digits.
      EXPECT_NEAR(answer.Y[i], c.Y[i], 1e-9 * std::abs(c.Y[i])) << c.Lines[0] << " at " << c.X[0][i];
      for (std::size_t k = 0; k < model.Names().size(); ++k) {
        const std::string& name = model.Names()[k];
        const double reference = c.Slopes.at(name)[i];
        // Where contributions cancel, an error is measured by what a change of all of the coefficient would make.
        const double scale = std::abs(reference) + std::abs(c.Y[i] / c.Values.at(name)) / 100;
        EXPECT_NEAR(answer.Slopes[k][i], reference, 1e-13 * scale)
            << c.Lines[0] << " by " << name << " at " << c.X[0][i];
      }
    }
  }
}

TEST(BlockGradient, GivesTheSameBitsForOnePointAndForMany) {
  for (const Case& c : Cases()) {
    Model model(c.Lines, c.Variables, c.Values);
    std::vector<std::vector<double>> block(c.Variables);
    for (std::size_t v = 0; v < c.Variables; ++v)
      for (std::size_t i = 0; i < kBlock; ++i) block[v].push_back(c.X[v][i % c.X[v].size()]);
    const auto many = model.GradientAt(block);
    ASSERT_TRUE(many.Went) << c.Lines[0];
    for (std::size_t i = 0; i < kBlock; ++i) {
      std::vector<std::vector<double>> point;
      for (const auto& column : block) point.push_back({column[i]});
      const auto one = model.GradientAt(point);
      for (std::size_t k = 0; k < one.Slopes.size(); ++k)
        ASSERT_EQ(BitsOfDouble(one.Slopes[k][0]), BitsOfDouble(many.Slopes[k][i])) << c.Lines[0] << " " << i;
    }
  }
}

// Every set of them, more than a program keeps the sweeps of.
TEST(BlockGradient, IsTheSameForTheOthersWhenCoefficientsAreHeld) {
  for (const Case& c : Cases()) {
    Model model(c.Lines, c.Variables, c.Values);
    const auto all = model.GradientAt(c.X);
    const std::size_t count = all.Slopes.size();
    for (std::size_t set = 0; set < std::size_t{1} << std::min(count, std::size_t{5}); ++set) {
      std::vector<bool> held(count);
      for (std::size_t k = 0; k < count; ++k) held[k] = (set >> k & 1) != 0;
      const auto some = model.GradientAt(c.X, held);
      for (std::size_t k = 0; k < count; ++k) {
        if (held[k]) continue;
        for (std::size_t i = 0; i < c.Y.size(); ++i)
          ASSERT_EQ(BitsOfDouble(some.Slopes[k][i]), BitsOfDouble(all.Slopes[k][i])) << c.Lines[0];
      }
    }
    EXPECT_TRUE(model.GradientAt(c.X, std::vector<bool>(count, true)).Went);
  }
}

TEST(BlockGradient, ShowsWhereAModelHasNoDerivative) {
  const struct {
    const char* Text;
    double A, X;
    bool Has;
  } cases[] = {
      {"(a*x)^0.5", 2, 0, false},
      {"(a*x)^1.5", 2, 0, true},
      {"x^a", 0, 0, false},
      {"x^a", 2, 0, true},
      {"(-2)^(a*x)", 1, 2, false},
      {"sqr(a*x)", 2, 0, false},
      {"if(x>1,sqr(a*x),a)", 2, 0, true},
      {"ln(a*x)", 1e-200, 1e-109, false},
      {"k0(a*x)", 1e-160, 1e-150, false},

      {"1/(a*x)", 1e-200, 1, false},
      {"0^(a*x)", 2, 0, false},
  };
  for (const auto& c : cases) {
    Model model({c.Text}, 1, {{"a", c.A}});
    EXPECT_EQ(model.GradientAt({{c.X}}).Went, c.Has) << c.Text;
  }
}

TEST(BlockGradient, IsThereButForFunctionsWithoutARule) {
  std::string longModel = "a*x";
  for (int i = 0; i < 400; ++i) longModel += "+x*" + std::to_string(i);
  const std::pair<std::string, bool> cases[] = {
      {"a*jnu(1.5,b*x)+ynu(x,a)", true}, {"a*rnd(1)", false}, {longModel, false},      {"a*jnu(b,x)", false},
      {"a*dknu(x+b,x)", false},          {"jn(a,b*x)", true}, {"igamma(a,b*x)", true}, {"legendre(a,b,c*x)", true},
      {"if(x>0,a,b)+(a>x)", true},
  };
  for (const auto& [text, has] : cases) {
    const Expression expression = Compile({text});
    const BlockProgram program(expression);
    EXPECT_EQ(program.Supported() && program.HasGradient(), has) << text.substr(0, 40);
  }
}

}  // namespace
}  // namespace quorvex
