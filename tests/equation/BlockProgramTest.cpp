#include <gtest/gtest.h>

#include <bit>
#include <random>

#include "core/FaultFlags.h"
#include "equation/BlockProgram.h"
#include "equation/Evaluator.h"
#include "equation/IntrinsicFunctions.h"
#include "equation/Parser.h"

namespace quorvex {
namespace {

// Random text of the language, of every operator and function.
class Writer {
 public:
  Writer(unsigned seed, bool several) : random_(seed), several_(several) {}

  std::string Expression(int depth) {
    if (depth == 0 || Pick(6) == 0) return Leaf();
    switch (Pick(8)) {
      case 0:
        return "(-" + Expression(depth - 1) + ")";
      case 1:
        return "if(" + Expression(depth - 1) + kCompare[Pick(6)] + Expression(depth - 1) + "," + Expression(depth - 1) +
               "," + Expression(depth - 1) + ")";
      case 2:
      case 3: {
        const auto functions = IntrinsicFunctions();
        for (;;) {
          const IntrinsicFunction& f = functions[Pick(functions.size())];
          if (!IsFunctionName(f.Name, several_) || f.Code == kIfCode) continue;
          std::string text = std::string(f.Name) + "(";
          for (int k = 0; k < f.Arguments; ++k) text += (k > 0 ? "," : "") + Expression(depth - 1);
          return text + ")";
        }
      }
      case 4:
        return "(" + Expression(depth - 1) + kRare[Pick(std::size(kRare))] + Expression(depth - 1) + ")";
      case 5:
        return "F" + std::to_string(1 + Pick(2));
      default:
        return "(" + Expression(depth - 1) + kOften[Pick(5)] + Expression(depth - 1) + ")";
    }
  }
  std::size_t Pick(std::size_t count) { return random_() % count; }
  double Number() {
    constexpr double kEdges[] = {0, -0.0, 1, -1, 0.5, 2, 1e300, -1e-300, 709.7, 30};
    if (Pick(8) == 0) return kEdges[Pick(std::size(kEdges))];
    return std::ldexp(static_cast<double>(random_()) / 4294967296.0 - 0.3, static_cast<int>(Pick(6)));
  }

 private:
  std::string Leaf() {
    constexpr const char* kOne[] = {"x", "x", "x", "a", "b", "c", "2", "0.5", "3", "pi", "xmean", "ymax"};
    constexpr const char* kSeveral[] = {"x1", "x2", "x3", "a", "b", "c", "2", "0.5", "3", "pi", "x2mean", "ymax"};
    return several_ ? kSeveral[Pick(std::size(kSeveral))] : kOne[Pick(std::size(kOne))];
  }

  static constexpr const char* kOften[] = {"+", "-", "*", "/", "^"};
  static constexpr const char* kCompare[] = {"<", ">", "=", "<>", "<=", ">="};
  static constexpr const char* kRare[] = {" and ", " or ", " xor ", " eqv ", " imp ", " mod ", "\\", "<", ">="};
  std::mt19937 random_;
  bool several_;
};

bool SameBits(double a, double b) { return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b); }

struct Counts {
  int Expressions = 0, Supported = 0, Blocks = 0, Faults = 0, Spread = 0;
};

// A block gives what its points give one by one, or says that they are to be taken so.
void Compare(unsigned seed, bool several, Counts& counts) {
  Writer writer(seed, several);
  const Expression e = Parser(several ? Dialect::SeveralVariables : Dialect::OneVariable, {})
                           .Compile({writer.Expression(4), writer.Expression(2), writer.Expression(2)});
  if (e.ParseError) return;
  ++counts.Expressions;
  BlockProgram program(e);
  if (!program.Supported()) return;
  ++counts.Supported;
  SCOPED_TRACE("seed " + std::to_string(seed));
  DataStatistics statistics;
  statistics.X.assign(3, {.XMean = 1.25});
  statistics.InputYMax = 7;
  Evaluator points;
  for (const std::size_t n : {std::size_t{1}, std::size_t{7}, kBlock}) {
    std::vector<std::vector<double>> x(several ? 3 : 1, std::vector<double>(n));
    const bool tame = writer.Pick(3) != 0;  // no special values, so that a block often goes through
    for (auto& column : x)
      for (double& value : column) value = tame ? 0.5 + static_cast<double>(writer.Pick(1000)) / 500 : writer.Number();
    std::vector<const double*> columns;
    for (const auto& column : x) columns.push_back(column.data());
    std::vector<double> values(e.CoefficientNames.size());
    for (double& value : values) value = writer.Number();

    const auto check = [&](bool went, const std::vector<double>& block) {
      bool fault = false;
      for (std::size_t i = 0; i < n; ++i) {
        std::vector<double> point;
        for (const auto& column : x) point.push_back(column[i]);
        double y = 0;
        if (!points.Evaluate(e, point, values, statistics, y)) {
          fault = true;
        } else if (went) {
          ASSERT_TRUE(SameBits(y, block[i])) << y << " " << block[i];
        }
      }
      EXPECT_FALSE(went && fault);
      // A block of one point has but one branch to take, so it refuses faults alone.
      if (n == 1) {
        EXPECT_EQ(went, !fault);
      }
      ++counts.Blocks;
      counts.Faults += fault;
    };
    std::vector<double> block(n), moved(n);
    bool went = false;
    for (const auto next :
         {BlockProgram::Next::Gradient, BlockProgram::Next::Nothing, BlockProgram::Next::Differences}) {
      went = program.Evaluate(columns, n, values, statistics, block.data(), next);
      check(went, block);
    }
    if (!went) continue;
    for (std::size_t c = 0; c < values.size(); ++c) {
      const double kept = values[c];
      values[c] = writer.Pick(2) == 0 ? kept * (1 + 1e-6) : writer.Number();
      ClearFaultFlags();
      const bool movedWent = program.EvaluateVaried(c, values[c], moved.data()) && !FaultFlagsRaised();
      check(movedWent, moved);
      std::vector<std::uint16_t> third;
      for (std::size_t i = 0; i < n; i += 3) third.push_back(static_cast<std::uint16_t>(i));
      if (movedWent && program.VariesAt(c)) {
        std::vector<double> both(2 * third.size());
        ASSERT_TRUE(program.EvaluateVariedAt(c, third, std::array{values[c], kept}, both.data()));
        for (std::size_t i = 0; i < third.size(); ++i) {
          ASSERT_TRUE(SameBits(both[i], moved[third[i]]));
          ASSERT_TRUE(SameBits(both[third.size() + i], block[third[i]]));
        }
        ++counts.Spread;
      }
      values[c] = kept;
    }
  }
}

TEST(BlockProgram, GivesTheBitsOfThePointPath) {
  for (const bool several : {false, true}) {
    Counts counts;
    for (unsigned seed = 1; seed <= 4000; ++seed) {
      Compare(seed, several, counts);
      if (testing::Test::HasFailure()) return;
    }
    EXPECT_GT(counts.Supported, 3000);
    EXPECT_GT(counts.Blocks, 10000);
    EXPECT_GT(counts.Faults, 1000);
    EXPECT_GT(counts.Spread, 1000);
    EXPECT_GT(counts.Blocks - counts.Faults, 3000);
  }
}

TEST(BlockProgram, LeavesToThePointPathWhatDependsOnOtherPoints) {
  const std::pair<std::vector<std::string>, bool> models[] = {
      {{"a*x+rnd(1)"}, false},
      {{"if(x>0,F1,0)+F1*a", "x^2"}, false},  // F1 may be stale
      {{"if(x>0,F1+F1,a)", "x^2"}, true},     // computed where it is used
      {{"F1*a+if(x>0,F1,0)", "x^2"}, true},
      {{"if(x>0,if(a>0,F1,0)+F1,0)", "x^2"}, false},
      {{"if(x,endif,a)"}, false},
  };
  for (const auto& [lines, supported] : models)
    EXPECT_EQ(BlockProgram(Parser(Dialect::OneVariable, {}).Compile(lines)).Supported(), supported) << lines[0];
}

TEST(BlockProgram, KnowsTheCoefficientsInWhichAModelIsLinear) {
  const struct {
    const char *Text, *Linear;  // the letters of the coefficients in which it is
  } cases[] = {{"a*x+b", "ab"},     {"-(a-b)*x/c", "ab"},   {"a*a*x+b", "b"},
               {"a*(b+a)*x", "b"},  {"a/b", "a"},           {"exp(a*x)+b", "b"},
               {"a^1*b", "b"},      {"(a>x)+b", "b"},       {"x*(a+x*(b+c))", "abc"},
               {"if(x>0,a,b)", ""}, {"a*b+b*c+c*a", "abc"}, {"not a+b", ""}};
  for (const auto& c : cases) {
    Parser parser(Dialect::OneVariable, LocaleText());
    const Expression expression = parser.Compile({c.Text});
    const BlockProgram program(expression);
    std::string linear;
    for (std::size_t i = 0; i < expression.CoefficientNames.size(); ++i)
      if (program.LinearIn(i)) linear += expression.CoefficientNames[i];
    EXPECT_EQ(linear, c.Linear) << c.Text;
  }
}

}  // namespace
}  // namespace quorvex
