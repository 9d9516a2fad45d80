#include <gtest/gtest.h>

#include <bit>
#include <cfenv>
#include <cstdint>
#include <limits>

#include "TableFile.h"
#include "core/FaultFlags.h"
#include "core/VectorWidths.h"
#include "functions/Elementary.h"

namespace quorvex {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kMax = std::numeric_limits<double>::max();
constexpr double kTiny = std::numeric_limits<double>::denorm_min();

using Column = std::vector<double>;

// One function in its forms. Those of one argument ignore b.
struct Function {
  const char* Name;
  double (*At)(double a, double b);
  void (*Block)(const double* a, const double* b, double* y, std::size_t n);
  long double (*Reference)(long double a, long double b);  // libm's in longer numbers
};

template <double (*f)(double)>
double One(double a, double) {
  return f(a);
}

template <void (*f)(const double*, double*, std::size_t)>
void OneBlock(const double* a, const double*, double* y, std::size_t n) {
  f(a, y, n);
}

const Function kExp = {"Exp", One<Exp>, OneBlock<ExpBlock>, [](long double a, long double) { return std::exp(a); }};
const Function kLn = {"Ln", One<Ln>, OneBlock<LnBlock>, [](long double a, long double) { return std::log(a); }};
const Function kLog10 = {"Log10", One<Log10>, OneBlock<Log10Block>,
                         [](long double a, long double) { return std::log10(a); }};
const Function kSin = {"Sin", One<Sin>, OneBlock<SinBlock>, [](long double a, long double) { return std::sin(a); }};
const Function kCos = {"Cos", One<Cos>, OneBlock<CosBlock>, [](long double a, long double) { return std::cos(a); }};
const Function kTan = {"Tan", One<Tan>, OneBlock<TanBlock>, [](long double a, long double) { return std::tan(a); }};
const Function kAtn = {"Atn", One<Atn>, OneBlock<AtnBlock>, [](long double a, long double) { return std::atan(a); }};
const Function kPower = {"Power", Power, PowerBlock, [](long double a, long double b) { return std::pow(a, b); }};
// the exponent in one piece, a call for each run of equal ones
const Function kFixedPower = {"Power, fixed exponent", Power,
                              [](const double* a, const double* b, double* y, std::size_t n) {
                                for (std::size_t from = 0, to; from < n; from = to) {
                                  const auto exponent = std::bit_cast<std::uint64_t>(b[from]);
                                  for (to = from; to < n && std::bit_cast<std::uint64_t>(b[to]) == exponent;) ++to;
                                  PowerBlock(a + from, b[from], y + from, to - from);
                                }
                              },
                              kPower.Reference};

const Function* const kFunctions[] = {&kExp, &kLn, &kLog10, &kSin, &kCos, &kTan, &kAtn, &kPower, &kFixedPower};

const Function& FunctionNamed(const std::string& name) {
  return **std::ranges::find(kFunctions, name, [](const Function* function) { return function->Name; });
}

bool SameBits(double a, double b) { return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b); }

// (value - reference) in units of the reference's last place
double UlpsOff(double value, long double reference) {
  int exponent;
  std::frexp(static_cast<double>(reference), &exponent);
  return static_cast<double>(std::ldexp(static_cast<long double>(value) - reference, 53 - std::max(exponent, -1021)));
}

// splitmix64 (Steele, Lea, Flood 2014): the same numbers on every machine.
class Random {
 public:
  std::uint64_t Word() {
    std::uint64_t z = (state_ += 0x9E3779B97F4A7C15);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
    return z ^ (z >> 31);
  }
  double Between(double low, double high) { return low + (high - low) * (static_cast<double>(Word() >> 11) * 0x1p-53); }

 private:
  std::uint64_t state_ = 7;
};

// Ranges of arguments, evenly filled. Under Log2 the bounds are those of the base-2 logarithm of the argument.
enum class Spacing { Even, Log2 };
struct Range {
  const Function& Of;
  double Low, High;
  Spacing Filled;
  double LowB, HighB;
  double Draw(Random& random) const {
    const double x = random.Between(Low, High);
    if (Filled == Spacing::Even) return x;
    return std::ldexp(1 + (x - std::floor(x)), static_cast<int>(std::floor(x)));
  }
};
std::vector<Range> Ranges() {
  std::vector<Range> ranges;
  for (const auto& row : TableRows("elementary_ranges.txt", 6))
    ranges.push_back({FunctionNamed(row[0]), Number(row[1]), Number(row[2]),
                      row[3] == "log2" ? Spacing::Log2 : Spacing::Even, Number(row[4]), Number(row[5])});
  return ranges;
}

TEST(Elementary, IsWithinOneUlpInHardCases) {
  for (const auto& row : TableRows("elementary_hard.txt", 5)) {
    const double value = FunctionNamed(row[0]).At(Number(row[1]), Number(row[2]));
    EXPECT_LT(std::abs(UlpsOff(value, Number(row[3])) - Number(row[4])), 0.95)
        << row[0] << ' ' << row[1] << ' ' << row[2];
  }
}

// The bounds are the worst of 6 million arguments of each kind, rounded up. A result that is subnormal is rounded
// twice.
TEST(Elementary, AgreesWithLongerNumbersEverywhere) {
  const double ofReference = std::numeric_limits<long double>::digits < 64 ? 0.6 : 0;  // where it is no longer
  Random random;
  for (const Range& range : Ranges()) {
    const bool exact = &range.Of == &kExp || &range.Of == &kLn || range.Of.At == Power;
    const double bound = ofReference + (exact ? 0.53 : &range.Of == &kTan ? 0.95 : 0.84);
    double worst = 0, at = 0, exponent = 0;
    for (int i = 0; i < 20000; ++i) {
      const double a = range.Draw(random), b = random.Between(range.LowB, range.HighB);
      const long double reference = range.Of.Reference(a, b);
      if (std::abs(reference) > kMax) continue;
      const double off =
          std::abs(UlpsOff(range.Of.At(a, b), reference)) - (std::abs(reference) < 0x1p-1022L ? 0.25 : 0);
      if (off > worst) worst = off, at = a, exponent = b;
    }
    EXPECT_LT(worst, bound) << range.Of.Name << ' ' << at << ' ' << exponent;
  }
}

// Powers that a double can hold come out whole, also at the border of the range.
TEST(Elementary, PowerIsExactWhereItCanBe) {
  for (const double base : {2.0, 3.0, 5.0, 6.0, 7.0, 10.0, 11.0, 12.0, 15.0, 49.0, 1.5, 0.25, -2.0, -3.0, -7.0}) {
    double product = 1, lost = 0;
    for (int k = 1; k < 1000 && lost == 0; ++k) {
      lost = std::fma(product, base, -(product * base));
      product *= base;
      if (lost == 0) {
        EXPECT_EQ(Power(base, k), product) << base << '^' << k;
      }
    }
  }
  for (int k = -1074; k < 1024; ++k) EXPECT_EQ(Power(2, k), std::ldexp(1, k)) << k;
  for (int k = 0; k <= 22; ++k) EXPECT_EQ(Power(10, k), std::stold("1e" + std::to_string(k))) << k;
  EXPECT_EQ(Power(0x1p-1074, -0.5), 0x1p537);
  EXPECT_EQ(Power(9, 0.5), 3);
  EXPECT_EQ(Power(27, -3), 1.0 / 19683);
}

TEST(Elementary, KeepsTheIdentities) {
  Random random;
  EXPECT_EQ(Exp(0), 1);
  EXPECT_EQ(Cos(0), 1);
  EXPECT_TRUE(SameBits(Ln(1), 0));
  for (int k = -307; k < 309; ++k) EXPECT_EQ(Log10(std::stod("1e" + std::to_string(k))), k);
  for (const auto odd : {Sin, Tan, Atn}) EXPECT_TRUE(SameBits(odd(-0.0), -0.0));
  for (int i = 0; i < 2000; ++i) {
    const double x = random.Between(-20000, 20000);
    EXPECT_EQ(Sin(-x), -Sin(x));
    EXPECT_EQ(Cos(-x), Cos(x));
    EXPECT_EQ(Tan(-x), -Tan(x));
    EXPECT_EQ(Atn(-x), -Atn(x));
    EXPECT_EQ(Power(x, 0), 1);
    EXPECT_EQ(Power(x, 1), x);
    EXPECT_EQ(Power(x, 2), x * x);
    EXPECT_EQ(Power(-x, 3), -Power(x, 3));
    EXPECT_EQ(Power(-x, -4), Power(x, -4));
  }
}

// Also in a block, among neighbours that raise nothing.
TEST(Elementary, RaisesTheFlagsOfFaultsAndNoOthers) {
  const std::map<std::string, int> flagNames = {
      {"none", 0}, {"invalid", FE_INVALID}, {"zero", FE_DIVBYZERO}, {"over", FE_OVERFLOW}};
  for (const auto& row : TableRows("elementary_flags.txt", 5)) {
    const Function& function = FunctionNamed(row[0]);
    const double a = Number(row[1]), b = Number(row[2]);
    const auto check = [&](const char* form, auto&& value) {
      ClearFaultFlags();
      const double y = value();
      const int flags = RaisedFlags(kFaultFlags);
      ClearFaultFlags();
      EXPECT_EQ(flags, flagNames.at(row[4])) << row[0] << form << ' ' << a << ' ' << b;
      const double expected = Number(row[3]);
      const bool right = row[3] == "finite"     ? std::isfinite(y)
                         : std::isnan(expected) ? std::isnan(y)
                                                : SameBits(y, expected);
      EXPECT_TRUE(right) << row[0] << form << ' ' << a << ' ' << b << " gives " << y;
    };
    check("", [&] { return function.At(a, b); });
    WithEveryVectorWidth([&] {
      for (const Function* form : {&function, &function == &kPower ? &kFixedPower : &function})
        check(" in a block", [&] {
          Column as(19, 0.75), bs(19, 1.25), ys(19);
          as[5] = a, bs[5] = b;
          form->Block(as.data(), bs.data(), ys.data(), 19);
          return ys[5];
        });
    });
  }
}

// Every length and place, in vectors of every width: special values among ordinary ones, blocks of either, and any bits
// at all; also in place. The flags are those of the one-number calls, whose bits and flags don't depend on the width
// either, and nothing is written beyond the end.
TEST(Elementary, GivesTheSameBitsAndFlagsInABlock) {
  constexpr double kNearQuarterTurns = 0x1.6ac5b262ca1ffp849;  // to 2^-61, the nearest that there is
  const double special[] = {0,     -0.0,  1,     2,      -1,  -2,   0.5,  3,         kTiny,  -kTiny, kInf,
                            -kInf, kNaN,  kMax,  -kMax,  710, -720, -746, 0x1p-1022, 0x1p32, 0x1p33, 1e5,
                            -1e17, 1e300, 1e-30, 0x1p70, -33, 0.9,  1e22, -0.3,      745,    1.5,    kNearQuarterTurns};
  constexpr std::size_t kMost = 1100;
  Random random;
  const auto draw = [&](unsigned odd) {  // of 8; beyond that any bits
    if (odd > 8) return std::bit_cast<double>(random.Word());
    if (random.Word() % 8 < odd) return special[random.Word() % std::size(special)];
    return random.Word() % 2 ? random.Between(-6, 6) : random.Between(0.001, 300);
  };
  for (const Function* function : kFunctions) {
    for (const unsigned odd : {0U, 1U, 8U, 9U}) {
      Column a(kMost + 4), b(kMost + 4), expected(kMost + 4);
      std::vector<int> raised(kMost + 4);
      for (std::size_t i = 0; i < a.size(); ++i) {
        a[i] = draw(odd);
        b[i] = function == &kFixedPower && i % 7 != 0 ? b[i - 1] : draw(odd);
        ClearFaultFlags();
        expected[i] = function->At(a[i], b[i]);
        raised[i] = RaisedFlags(kFaultFlags);
      }
      const auto compare = [&](std::size_t from, std::size_t n) {
        Column apart(n + 1, 77), inPlace(a.begin() + static_cast<std::ptrdiff_t>(from), a.end());
        ClearFaultFlags();
        function->Block(a.data() + from, b.data() + from, apart.data(), n);
        int flags = RaisedFlags(kFaultFlags);
        for (std::size_t i = 0; i < n; ++i) flags &= ~raised[from + i];
        EXPECT_EQ(flags, 0) << function->Name << ", raised by no one number among " << n;
        function->Block(inPlace.data(), b.data() + from, inPlace.data(), n);
        for (std::size_t i = 0; i < n; ++i) {
          flags = RaisedFlags(kFaultFlags);
          ASSERT_EQ(flags & raised[from + i], raised[from + i]) << function->Name << ' ' << a[from + i];
          const bool bothNaN = std::isnan(apart[i]) && std::isnan(expected[from + i]);
          ASSERT_TRUE(bothNaN || SameBits(apart[i], expected[from + i]))
              << function->Name << ' ' << a[from + i] << ' ' << b[from + i] << ", place " << i << " of " << n;
          ASSERT_TRUE(SameBits(inPlace[i], apart[i])) << function->Name << " in place";
        }
        EXPECT_EQ(apart[n], 77);
        EXPECT_TRUE(SameBits(inPlace[n], a[from + n]));
      };
      WithEveryVectorWidth([&] {
        for (std::size_t i = 0; i < a.size(); ++i) {
          ClearFaultFlags();
          const double y = function->At(a[i], b[i]);
          ASSERT_EQ(RaisedFlags(kFaultFlags), raised[i]) << function->Name << ' ' << a[i] << ' ' << b[i];
          ASSERT_TRUE(SameBits(y, expected[i]) || (std::isnan(y) && std::isnan(expected[i])))
              << function->Name << ' ' << a[i] << ' ' << b[i];
        }
        for (std::size_t n = 0; n <= 40; ++n)
          for (std::size_t from = 0; from < 4; ++from) compare(from, n);
        for (const std::size_t n : {255U, 256U, 257U, 1100U}) compare(1, n);
      });
    }
  }
}

// One number for the bits of some 90000 results. Another machine, compiler or option that changes a single one changes
// it; so does every change of a method, after which it is to be set anew.
TEST(Elementary, HasTheBitsItAlwaysHad) {
  WithEveryVectorWidth([] {
    std::uint64_t hash = 0xCBF29CE484222325;  // FNV-1a
    Random random;
    for (const Range& range : Ranges()) {
      Column a(4096), b(4096), y(4096);
      for (std::size_t i = 0; i < a.size(); ++i) {
        a[i] = range.Draw(random);
        b[i] = random.Between(range.LowB, range.HighB);
      }
      range.Of.Block(a.data(), b.data(), y.data(), y.size());
      for (const double value : y)
        for (int shift = 0; shift < 64; shift += 8)
          hash = (hash ^ (std::bit_cast<std::uint64_t>(value) >> shift & 0xFF)) * 0x100000001B3;
    }
    EXPECT_EQ(hash, 0x7B7267B7DE8BB786);
  });
}

}  // namespace
}  // namespace quorvex
