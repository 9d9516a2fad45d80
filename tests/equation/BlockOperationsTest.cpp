#include <gtest/gtest.h>

#include <bit>
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

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kMax = std::numeric_limits<double>::max();
const double kHostile[] = {0,       -0.0,     1,        -1,   2,      -2,      0.5,     -0.25,     3,
                           1.3,     1e-300,   -1e300,   0.1,  -7,     kInf,    -kInf,   kNaN,      1e300,
                           -1e-300, 0x1p1022, 0x1p1023, kMax, 5e-324, 0x1p-60, -3e-310, 0x1p-1022, 0x1.8p-1023};
constexpr std::size_t kCount = std::size(kHostile);

// The same number, or NaN on both sides.
bool Same(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (std::isnan(a) && std::isnan(b));
}

int TakeFlags() {
  const int flags = RaisedFlags(kFaultFlags);
  ClearFaultFlags();
  return flags;
}

struct Operator {
  const char* Name;
  int Code;
  bool Unary;  // ignores the second operand
  void Run(const BlockOperand& a, const BlockOperand& b, std::size_t n, double* out) const {
    if (Unary)
      UnaryOverBlock(Code, a, n, out);
    else
      BinaryOverBlock(Code, a, b, n, out);
  }
  double AtPoint(double a, double b) const { return Unary ? UnaryOperation(Code, a) : BinaryOperation(Code, a, b); }
};

constexpr Operator kOperators[] = {
    {"negate", kNegate, true}, {"+", kAdd, false},      {"-", kSubtract, false},     {"*", kMultiply, false},
    {"/", kDivide, false},     {"^", kPower, false},    {"=", kEqual, false},        {"<", kLess, false},
    {">", kGreater, false},    {"<>", kUnequal, false}, {"<=", kLessOrEqual, false}, {">=", kGreaterOrEqual, false}};

// The block's results and flags are those of its points, apart and in the place of an operand; nothing is written
// beyond the end.
void ExpectSameAsPoints(const Operator& op, const BlockOperand& a, const BlockOperand& b, std::size_t n) {
  Column expected(n), apart(n + 1, 77);
  ClearFaultFlags();
  for (std::size_t i = 0; i < n; ++i) expected[i] = op.AtPoint(a.At(i), b.At(i));
  const int flags = TakeFlags();
  op.Run(a, b, n, apart.data());
  EXPECT_EQ(TakeFlags(), flags) << op.Name << ' ' << a.At(0) << ' ' << b.At(0) << ", " << n << " points";
  EXPECT_EQ(apart[n], 77);
  for (std::size_t i = 0; i < n; ++i)
    ASSERT_TRUE(Same(apart[i], expected[i])) << a.At(i) << ' ' << op.Name << ' ' << b.At(i) << " gives " << apart[i];
  for (const bool first : {true, false}) {
    const double* const points = first ? a.Points : b.Points;
    if (points == nullptr) continue;
    Column place(points, points + n);
    const BlockOperand inPlace{place.data(), 0};
    op.Run(first ? inPlace : a, first ? b : inPlace, n, place.data());
    for (std::size_t i = 0; i < n; ++i) ASSERT_TRUE(Same(place[i], expected[i])) << op.Name << " in place";
  }
  ClearFaultFlags();
}

// Every pair of the numbers, as columns and as a column and one number on either side; any length and place in memory.
TEST(BlockOperations, GiveTheBitsAndFlagsOfThePointsInVectorsOfEveryWidth) {
  Column columns[2];
  for (std::size_t i = 0; i < kCount * kCount + 4; ++i) {
    columns[0].push_back(kHostile[i % kCount]);
    columns[1].push_back(kHostile[i / kCount % kCount]);
  }
  const auto column = [&](std::size_t which, std::size_t from) {
    return BlockOperand{columns[which].data() + from, 0};
  };
  WithEveryVectorWidth([&] {
    for (const Operator& op : kOperators) {
      ExpectSameAsPoints(op, column(0, 0), column(1, 0), kCount * kCount);
      for (const double number : kHostile) {
        ExpectSameAsPoints(op, column(0, 1), {nullptr, number}, kBlock);
        ExpectSameAsPoints(op, {nullptr, number}, column(0, 2), kBlock);
        ExpectSameAsPoints(op, {nullptr, number}, {nullptr, kHostile[3]}, 5);
      }
      for (std::size_t n = 1; n <= 40; ++n)
        for (std::size_t from = 0; from < 4; ++from) ExpectSameAsPoints(op, column(0, from), column(1, 3 - from), n);
    }
  });
}

// A division by a power of two is made a multiplication; not where the inverse would lose bits or overflow.
TEST(BlockOperations, DivideByEveryPowerOfTwo) {
  const BlockOperand x{kHostile, 0};
  WithEveryVectorWidth([&] {
    for (int k = -1074; k < 1024; ++k)
      ExpectSameAsPoints({"/", kDivide, false}, x, {nullptr, std::ldexp(k % 2 == 0 ? 1 : -1, k)}, kCount);
  });
}

}  // namespace
}  // namespace quorvex
