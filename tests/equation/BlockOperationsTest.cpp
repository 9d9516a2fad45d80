#include <gtest/gtest.h>

#include <bit>
#include <cfenv>
#include <cstdint>
#include <limits>

#include "core/FaultFlags.h"
#include "core/Limits.h"
#include "core/VectorWidths.h"
#include "equation/BlockOperations.h"
#include "equation/Expression.h"
#include "equation/Operators.h"

namespace quorvex {
namespace {

using Column = std::vector<double>;

// An operation over a block, and the same at one point. It has up to three operands and ignores the others.
struct Operation {
  const char* Name;
  std::function<void(const BlockOperand (&)[3], std::size_t n, double* out)> Block;
  std::function<double(double, double, double)> AtPoint;
};

Operation Binary(const char* name, int code) {
  return {
      name,
      [code](const BlockOperand(&of)[3], std::size_t n, double* out) { BinaryOverBlock(code, of[0], of[1], n, out); },
      [code](double a, double b, double) { return BinaryOperation(code, a, b); }};
}

const Operation kOperations[] = {
    {"negate", [](const BlockOperand (&of)[3], std::size_t n, double* out) { UnaryOverBlock(kNegate, of[0], n, out); },
     [](double a, double, double) { return UnaryOperation(kNegate, a); }},
    Binary("+", kAdd),
    Binary("-", kSubtract),
    Binary("*", kMultiply),
    Binary("/", kDivide),
    Binary("^", kPower),
    Binary("=", kEqual),
    Binary("<", kLess),
    Binary(">", kGreater),
    Binary("<>", kUnequal),
    Binary("<=", kLessOrEqual),
    Binary(">=", kGreaterOrEqual),
    {"a+b*c",
     [](const BlockOperand (&of)[3], std::size_t n, double* out) { AddProductOverBlock(of[0], of[1], of[2], n, out); },
     [](double a, double b, double c) {
       volatile double product = b * c;
       return a + product;
     }},
    {"a-b*c",
     [](const BlockOperand (&of)[3], std::size_t n, double* out) {
       SubtractProductOverBlock(of[0], of[1], of[2], n, out);
     },
     [](double a, double b, double c) {
       volatile double product = b * c;
       return a - product;
     }},
};

// The same number, or NaN on both sides.
bool Same(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (std::isnan(a) && std::isnan(b));
}

int TakeFlags() {
  const int flags = std::fetestexcept(kFaultFlags);
  ClearFaultFlags();
  return flags;
}

constexpr double kInf = std::numeric_limits<double>::infinity();
const double kHostile[] = {0,
                           -0.0,
                           1,
                           -1,
                           2,
                           -2,
                           0.5,
                           -0.25,
                           3,
                           1.3,
                           1e-300,
                           1e300,
                           -1e300,
                           -1e-300,
                           0x1p1022,
                           0x1p1023,
                           0x1p-60,
                           5e-324,
                           -3e-310,
                           1.7976931348623157e308,
                           kInf,
                           -kInf,
                           0.1,
                           -7,
                           0x1p-1022,
                           0x1.8p-1023,
                           std::numeric_limits<double>::quiet_NaN()};

// A number of the list, from a counter: neighbouring points and operands meet in all pairs.
double Hostile(std::size_t i, std::size_t step) {
  return kHostile[(i * step + i / std::size(kHostile)) % std::size(kHostile)];
}

// Each operand a column or one number, any length, any place in memory, apart and over an operand.
TEST(BlockOperations, GiveTheBitsAndFlagsOfThePointsInVectorsOfEveryWidth) {
  constexpr std::size_t kLength = 27 * 27;
  Column columns[3];
  for (std::size_t i = 0; i < kLength + 4; ++i) {
    columns[0].push_back(Hostile(i, 1));
    columns[1].push_back(Hostile(i / std::size(kHostile), 1));
    columns[2].push_back(Hostile(i, 5));
  }
  const auto check = [&](const Operation& operation, const BlockOperand(&of)[3], std::size_t n) {
    Column expected(n), apart(n + 1, 77);
    ClearFaultFlags();
    for (std::size_t i = 0; i < n; ++i) expected[i] = operation.AtPoint(of[0].At(i), of[1].At(i), of[2].At(i));
    const int flags = TakeFlags();
    operation.Block(of, n, apart.data());
    EXPECT_EQ(TakeFlags(), n == 0 ? 0 : flags) << operation.Name;
    EXPECT_EQ(apart[n], 77);
    for (std::size_t i = 0; i < n; ++i)
      ASSERT_TRUE(Same(apart[i], expected[i])) << operation.Name << ' ' << of[0].At(i) << ' ' << of[1].At(i) << ' '
                                               << of[2].At(i) << " gives " << apart[i] << ", point " << i;
    for (std::size_t k = 0; k < 3; ++k) {
      if (of[k].Points == nullptr) continue;
      Column over(of[k].Points, of[k].Points + n);
      BlockOperand operands[3] = {of[0], of[1], of[2]};
      operands[k].Points = over.data();
      operation.Block(operands, n, over.data());
      for (std::size_t i = 0; i < n; ++i) ASSERT_TRUE(Same(over[i], expected[i])) << operation.Name << " in place";
    }
    ClearFaultFlags();
  };
  WithEveryVectorWidth([&] {
    for (const Operation& operation : kOperations)
      for (unsigned shape = 0; shape < 8; ++shape) {  // bit k: operand k is a column
        const auto operands = [&](std::size_t from, std::size_t number, auto use) {
          BlockOperand of[3];
          for (std::size_t k = 0; k < 3; ++k) {
            const bool column = (shape >> k & 1) != 0;
            of[k] = {column ? columns[k].data() + from : nullptr, column ? 0 : Hostile(number, 1 + k)};
          }
          use(of);
        };
        for (std::size_t number = 0; number < std::size(kHostile); ++number)
          operands(number % 4, number, [&](const auto& of) { check(operation, of, shape == 0 ? 1 : kBlock); });
        for (std::size_t n = 1; n <= 40; ++n) operands(n % 4, n, [&](const auto& of) { check(operation, of, n); });
        operands(1, 2, [&](const auto& of) { check(operation, of, kLength); });
      }
  });
}

// A division by a power of two is made a multiplication, in the extremes, too.
TEST(BlockOperations, DivideByAnyNumber) {
  Column x(std::begin(kHostile), std::end(kHostile)), y(x.rbegin(), x.rend()), out(x.size());
  const auto check = [&](double divisor) {
    int flags = 0, expectedFlags = 0;
    ClearFaultFlags();
    BinaryOverBlock(kDivide, {x.data(), 0}, {nullptr, divisor}, x.size(), out.data());
    flags = TakeFlags();
    for (std::size_t i = 0; i < x.size(); ++i) {
      EXPECT_TRUE(Same(out[i], x[i] / divisor)) << x[i] << " / " << divisor;
    }
    expectedFlags = TakeFlags();
    EXPECT_EQ(flags, expectedFlags) << divisor;
    QuotientOverBlock(x.data(), y.data(), divisor, x.size(), out.data());
    flags = TakeFlags();
    for (std::size_t i = 0; i < x.size(); ++i) {
      volatile double difference = x[i] - y[i];
      EXPECT_TRUE(Same(out[i], difference / divisor)) << x[i] << " - " << y[i] << " / " << divisor;
    }
    expectedFlags = TakeFlags();
    EXPECT_EQ(flags, expectedFlags) << divisor;
  };
  WithEveryVectorWidth([&] {
    for (int k = -1074; k < 1024; ++k) check(std::ldexp(k % 2 == 0 ? 1 : -1, k));
    for (const double divisor : kHostile) check(divisor);
  });
}

}  // namespace
}  // namespace quorvex
