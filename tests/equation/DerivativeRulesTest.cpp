#include <gtest/gtest.h>

#include <bit>
#include <sstream>

#include "TableFile.h"
#include "core/FaultFlags.h"
#include "core/Limits.h"
#include "equation/Checked.h"
#include "equation/DerivativeRules.h"

namespace quorvex {
namespace {

// The derivative of a function where it has a value, or nothing where the flags show that there is none.
std::optional<double> Slope(const IntrinsicFunction& function, std::size_t which, const double* args) {
  const std::optional<double> value = Checked(function, args);
  EXPECT_TRUE(value.has_value()) << function.Name << " " << args[0];
  if (!value) return std::nullopt;
  const BlockOperand operands[3] = {{nullptr, args[0]}, {nullptr, args[1]}, {nullptr, args[2]}};
  double slope = 0;
  ClearFaultFlags();
  PartialOverBlock(function.Code, which, operands, {nullptr, *value}, 1, &slope);
  if (FaultFlagsRaised()) return std::nullopt;
  return slope;
}

struct Row {
  const IntrinsicFunction* Function;
  std::size_t Which;
  double Args[3];
  double Reference, Scale;
};

std::vector<Row> Rows() {
  std::ifstream table(TestData("partials.txt"));
  std::vector<Row> rows;
  for (std::string line; std::getline(table, line);) {
    std::vector<std::string> words = Split(line, ' ');
    Row row{FindFunction(words[0]), std::stoul(words[1]), {}, 0, 0};
    const auto count = static_cast<std::size_t>(row.Function->Arguments);
    for (std::size_t k = 0; k < count; ++k) row.Args[k] = Number(words[2 + k]);
    row.Reference = Number(words[2 + count]);
    row.Scale = words.size() > 3 + count ? std::max(Number(words[3 + count]), std::abs(row.Reference))
                                         : std::abs(row.Reference);
    rows.push_back(row);
  }
  return rows;
}

// The file has the derivative at 200 places of the domain; its generator tells what errors are measured by.
TEST(DerivativeRules, AgreeWithEveryFunctionOverItsDomain) {
  std::map<std::pair<int, std::size_t>, int> counts;
  for (const Row& row : Rows()) {
    ASSERT_TRUE(HasPartial(row.Function->Code, row.Which)) << row.Function->Name;
    // Of the elementary functions each is some roundings.
    const bool elementary = row.Function->Code < 38 || row.Function->Name == "mag";
    EXPECT_NEAR(Slope(*row.Function, row.Which, row.Args).value_or(NAN), row.Reference,
                (elementary ? 1e-15 : 1e-12) * row.Scale)
        << row.Function->Name << " " << row.Which << " at " << row.Args[0] << " " << row.Args[1] << " " << row.Args[2];
    ++counts[{row.Function->Code, row.Which}];
  }
  for (const auto& function : IntrinsicFunctions())
    for (std::size_t which = 0; which < static_cast<std::size_t>(function.Arguments); ++which) {
      const int count = counts[{function.Code, which}];
      EXPECT_EQ(count > 0, HasPartial(function.Code, which)) << function.Name << " " << which;
    }
}

// Over blocks, some with values of arguments that all points share, it is the same bits.
TEST(DerivativeRules, GiveTheSameBitsForOnePointAndForMany) {
  const std::vector<Row> rows = Rows();
  for (std::size_t first = 0; first < rows.size();) {
    std::size_t n = 0;
    while (first + n < rows.size() && n < kBlock && rows[first + n].Function == rows[first].Function &&
           rows[first + n].Which == rows[first].Which)
      ++n;
    const IntrinsicFunction& function = *rows[first].Function;
    std::vector<double> columns[3], values, slopes(n);
    for (std::size_t i = 0; i < n; ++i) {
      for (std::size_t k = 0; k < 3; ++k) columns[k].push_back(rows[first + i].Args[k]);
      values.push_back(Checked(function, rows[first + i].Args).value_or(NAN));
    }
    const BlockOperand operands[3] = {{columns[0].data(), 0}, {columns[1].data(), 0}, {columns[2].data(), 0}};
    PartialOverBlock(function.Code, rows[first].Which, operands, {values.data(), 0}, n, slopes.data());
    for (std::size_t i = 0; i < n; ++i)
      ASSERT_EQ(std::bit_cast<std::uint64_t>(slopes[i]),
                std::bit_cast<std::uint64_t>(Slope(function, rows[first].Which, rows[first + i].Args).value_or(NAN)))
          << function.Name;
    first += n;
  }
}

TEST(DerivativeRules, HaveTheDerivativeOfThePieceAtStepsAndCorners) {
  constexpr struct {
    const char* Word;
    std::size_t Which;
    double Args[3];
    double Slope;
  } kCases[] = {
      {"abs", 0, {0}, 1},
      {"abs", 0, {-0.0}, 1},
      {"abs", 0, {-3}, -1},
      {"fract", 0, {2}, 1},
      {"fract", 0, {-0.5}, 1},
      {"int", 0, {3}, 0},
      {"sgn", 0, {0}, 0},
      {"floor", 0, {-2}, 0},
      {"max", 0, {2, 2}, 1},
      {"max", 1, {2, 2}, 0},
      {"min", 0, {2, 2}, 0},
      {"min", 1, {2, 2}, 1},
      {"mag", 0, {0, -4}, 0},
      {"mag", 1, {0, -4}, -1},
      {"mag", 0, {-3e300, 4e300}, -0.6},
      {"mag", 0, {3e-320, 4e-320}, 0.6},
      // The hyperbolic functions are constant beyond 707.
      {"hsin", 0, {710}, 0},
      {"hcos", 0, {-1e9}, 0},
      {"htan", 0, {1e300}, 0},
      {"htan", 0, {0}, 1},
      {"hcos", 0, {0}, 0},
      {"hsec", 0, {0}, 0},
      {"arctan", 0, {0}, 1},
      {"arctan", 0, {1e200}, 0},
      {"arcsec", 0, {-1e200}, 0},
      {"harcsin", 0, {1e300}, 1e-300},
      {"harccotan", 0, {-1e200}, 0},
      {"erf", 0, {1e200}, 0},
      {"erfc", 0, {0}, -1.1283791670955126},
      {"student", 0, {0, 1}, 0.63661977236758134},  // 2/pi
      {"igamma", 1, {1, 0}, 1},
      {"igamma", 1, {3, 0}, 0},
      {"igamma", 0, {2.5, 0}, 0},
      {"igamma", 1, {2, 1e9}, 0},
      {"igamma", 0, {2, 1e9}, 0},
      {"ibeta", 2, {1, 3, 0}, 3},
      {"ibeta", 2, {2, 3, 1}, 0},
      {"ibeta", 2, {2, 1, 1}, 2},
      {"fdist", 2, {2, 4, 0}, -1},
      {"fdist", 2, {4, 4, 0}, 0},
      {"fdist", 2, {4, 4, 1e200}, 0},
      {"j0", 0, {0}, 0},
      {"j1", 0, {0}, 0.5},
      {"i1", 0, {0}, 0.5},
      {"jn", 1, {1, 0}, 0.5},
      {"jn", 1, {5, 0}, 0},
      {"jn", 1, {2, 1e-200}, 2.5e-201},
      {"djnu", 1, {0, 1e-200}, -0.5},
      {"djnu", 1, {1, 1e-200}, -3.75e-201},
      {"djnu", 1, {2, 1e-200}, 0.25},
      {"dsphjn", 1, {2, 1e-9}, 2.0 / 15},
      {"sphjn", 1, {1, 1e-200}, 1.0 / 3},
      {"airya", 0, {0}, -0.25881940379280680},
      {"dairyb", 0, {0}, 0},
      {"airya", 0, {110}, 0},
      {"legendre", 2, {4, 0, 1}, 10},
      {"legendre", 2, {3, 2, 1}, -30},
      {"legendre", 2, {0, 0, -1}, 0},
  };
  for (const auto& c : kCases)
    EXPECT_NEAR(Slope(*FindFunction(c.Word), c.Which, c.Args).value_or(NAN), c.Slope,
                std::max(1e-15, 1e-13 * std::abs(c.Slope)))
        << c.Word << " " << c.Which << " " << c.Args[0] << " " << c.Args[1];
}

TEST(DerivativeRules, ShowPlacesWithoutADerivative) {
  constexpr struct {
    const char* Word;
    std::size_t Which;
    double Args[3];
  } kCases[] = {
      {"sqr", 0, {0}},          {"arcsin", 0, {1}},        {"arccos", 0, {-1}},       {"arcsec", 0, {1}},
      {"arccosec", 0, {-1}},    {"harccos", 0, {1}},       {"harcsec", 0, {1}},       {"mag", 0, {0, 0}},
      {"mag", 1, {0, 0}},       {"ln", 0, {1e-309}},       {"igamma", 1, {0.5, 0}},   {"chi2", 0, {0, 1}},
      {"fdist", 2, {1, 4, 0}},  {"ibeta", 2, {0.5, 3, 0}}, {"ibeta", 2, {2, 0.5, 1}}, {"legendre", 2, {3, 1, 1}},
      {"gammaln", 0, {1e-309}}, {"y1", 0, {1e-200}},       {"cosec", 0, {1e-160}},    {"hcotan", 0, {1e-160}},
  };
  for (const auto& c : kCases)
    EXPECT_FALSE(Slope(*FindFunction(c.Word), c.Which, c.Args)) << c.Word << " " << c.Args[0] << " " << c.Args[1];
}

}  // namespace
}  // namespace quorvex
