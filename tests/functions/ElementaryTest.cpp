#include <gtest/gtest.h>

#include <bit>
#include <cfenv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "core/FaultFlags.h"
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
  Spacing Filled = Spacing::Even;
  double LowB = 0, HighB = 0;
  double Draw(Random& random) const {
    const double x = random.Between(Low, High);
    if (Filled == Spacing::Even) return x;
    return std::ldexp(1 + (x - std::floor(x)), static_cast<int>(std::floor(x)));
  }
};
const Range kRanges[] = {{kExp, -1, 1},
                         {kExp, -745, 709.7},
                         {kExp, -60, 0, Spacing::Log2},
                         {kLn, 0.98, 1.02},
                         {kLn, 0.1, 100},
                         {kLn, -1074, 1024, Spacing::Log2},
                         {kLog10, 0.98, 1.02},
                         {kLog10, -1074, 1024, Spacing::Log2},
                         {kSin, -7, 7},
                         {kSin, -9000, 9000},
                         {kSin, -30, 1024, Spacing::Log2},
                         {kCos, -7, 7},
                         {kCos, -9000, 9000},
                         {kCos, -30, 1024, Spacing::Log2},
                         {kTan, -7, 7},
                         {kTan, -9000, 9000},
                         {kTan, -30, 1024, Spacing::Log2},
                         {kAtn, -3, 3},
                         {kAtn, -30, 60, Spacing::Log2},
                         {kPower, 0.9, 1.1, Spacing::Even, -7000, 6700},
                         {kPower, 0, 100, Spacing::Even, -3, 4},
                         {kPower, -1074, 1023, Spacing::Log2, -0.95, 0.95},
                         {kFixedPower, 0, 100, Spacing::Even, 1.3, 1.3},
                         {kFixedPower, -20, 20, Spacing::Even, 7, 7}};

// mpmath at 60 digits (400 for the reduction): the nearest double, and what it lacks in units of its last place.
// Borders of the reductions and tables, zeros of the functions, the double nearest of all to a multiple of pi/2.
TEST(Elementary, IsWithinOneUlpInHardCases) {
  constexpr double kWorst = 0x1.6ac5b262ca1ffp+849;
  const struct {
    const Function& Of;
    double A, B, Nearest, Lacks;
  } rows[] = {{kExp, -0x1.7490a3d70a3d7p+9, 0, 0x1p-1074, -0.4984},
              {kExp, -0x1.624p+9, 0, 0x0.e6cf6d08897acp-1022, -0.3127},
              {kExp, -0x1.70ef54646d497p-57, 0, 1, -0.04504},
              {kExp, 0x1.62e42fefa39efp-2, 0, 0x1.6a09e667f3bccp+0, 0.4908},
              {kExp, -0x1.62e42fef7ffe7p-9, 0, 0x1.fe9d96b2a2612p-1, -0.4286},
              {kExp, 0x1.62e42fef80b9cp-9, 0, 0x1.00b1afa5abba7p+0, -0.08318},
              {kExp, 0x1.62e42fefa39efp+9, 0, 0x1.fffffffffff2ap+1023, 0.1057},
              {kLn, kTiny, 0, -0x1.74385446d71c3p+9, -0.389},
              {kLn, 0x1p-1022, 0, -0x1.6232bdd7abcd2p+9, -0.2417},
              {kLn, kMax, 0, 0x1.62e42fefa39efp+9, 0.2079},
              {kLn, 0x1.fffffffffffffp-1, 0, -0x1p-53, -0.25},
              {kLn, 0x1.0000000000001p+0, 0, 0x1.fffffffffffffp-53, 0},
              {kLn, 0x1.01p+0, 0, 0x1.ff00aa2b10bc0p-9, 0.2892},
              {kLn, 0x1.00ffff29406b3p+0, 0, 0x1.fefefe57b9bf9p-9, -0.02091},
              {kLn, 0x1.fefffffffffffp-1, 0, -0x1.0040155d5899ep-9, -0.4034},
              {kLn, 0x1.6p-1, 0, -0x1.7fafa3bd8151cp-2, 0.07069},
              {kLn, 0x1.6p+0, 0, 0x1.4618bc21c5ec2p-2, 0.4885},
              {kLn, 0x1.5ffffffbb47d0p+0, 0, 0x1.4618bc154757dp-2, -0.3345},
              {kSin, 1e-300, 0, 1e-300, 0},
              {kSin, 0x1.921fb54442d18p-1, 0, 0x1.6a09e667f3bccp-1, 0.3696},
              {kSin, 0x1.921fb54442d18p+1, 0, 0x1.1a62633145c07p-53, -0.1215},
              {kSin, 355, 0, -0x1.f9bd0307d1de3p-16, 0.3841},
              {kSin, 8192, 0, -0x1.e98f87098c8e4p-1, 0.1348},
              {kSin, 0x1.0000000000001p+13, 0, -0x1.e98f87098b627p-1, 0.3997},
              {kSin, 0x1.921fb54442d18p+14, 0, -0x1.1a62633145c07p-40, 0.1215},
              {kSin, 1e22, 0, -0x1.b453ab76bf397p-1, -0.06107},
              {kSin, 0x1p+120, 0, 0x1.82e34655e6fcbp-2, 0.4276},
              {kSin, kMax, 0, 0x1.452fc98b34e97p-8, -0.2888},
              {kCos, 0x1.921fb54442d18p+0, 0, 0x1.1a62633145c07p-54, -0.1215},
              {kCos, 0x1.921fb54442d18p-1, 0, 0x1.6a09e667f3bcdp-1, -0.2404},
              {kCos, 0x1p+13, 0, 0x1.2bd43d0eb2c92p-2, 0.2405},
              {kCos, 0x1.0000000000001p+13, 0, 0x1.2bd43d0eba6f6p-2, 0.1223},
              {kCos, kWorst, 0, -0x1.14ae72e6ba22fp-61, 0.0454},
              {kCos, kMax, 0, -0x1.fffe62ecfab75p-1, -0.2345},
              {kTan, 0x1.921fb54442d18p-1, 0, 0x1.fffffffffffffp-1, 0.4485},
              {kTan, 0x1.921fb54442d18p+0, 0, 0x1.d02967c31cdb5p+53, -0.122},
              {kTan, 0x1.921fb54442d18p+1, 0, -0x1.1a62633145c07p-53, 0.1215},
              {kTan, 8192, 0, -0x1.a1ff2171ec9fbp+1, 0.1962},
              {kTan, kWorst, 0, -0x1.d9ba9a7975636p+60, 0.3606},
              {kTan, kMax, 0, -0x1.4530cfe729484p-8, 0.2779},
              {kAtn, 1e-300, 0, 1e-300, 0},
              {kAtn, 0x1.bffff94a03595p-2, 0, 0x1.a64ee69ac6b9ap-2, 0.3838},
              {kAtn, 0x1.cp-2, 0, 0x1.a64eec3cc23fdp-2, -0.286},
              {kAtn, 0x1.6p-1, 0, 0x1.345f01cce37bbp-1, 0.2658},
              {kAtn, 0x1.3p+0, 0, 0x1.bde70ed439fe7p-1, -0.2044},
              {kAtn, 0x1.38p+1, 0, 0x1.2e75728833a54p+0, 0.06809},
              {kAtn, 0x1.37ffac1d29dc7p+1, 0, 0x1.2e755a5cb8580p+0, -0.0013},
              {kAtn, 1.7e308, 0, 0x1.921fb54442d18p+0, 0.2758},
              {kPower, 10, 308.25, 0x1.fa788589d81d3p+1023, -0.1174},
              {kPower, 0x1.0000000000001p+0, 0x1.4d1120d7b16p+61, 0x1.0502174a9bef1p+961, 0.1971},
              {kPower, 0x1.fffffffffffffp-1, -0x1.4d1120d7b16p+62, 0x1.0502174a9c0efp+961, -0.4287},
              {kPower, 0x1.0000000000001p+0, -0x1.582b4c9a9dbp+61, 0x1.ea63abfe42715p-994, -0.3266},
              {kPower, kTiny, 0x1.ccccccccccccdp-1, 0x1.51cb453b9530ap-967, 0.04168},
              {kPower, kTiny, -0x1.e666666666666p-1, 0x1.3b2c47bff8272p+1020, -0.4209},
              {kPower, kMax, -0x1.07ae147ae147bp+0, 0x0.000000009b6acp-1022, -0.1925},
              {kPower, kMax, 0x1.ff7ced916872bp-1, 0x1.f78d9576fb57dp+1022, 0.3423},
              {kPower, 0x1.00ffffd50ce24p+0, 0x1.5f9p+17, 0x1.559fe74722d39p+1012, 0.2032},
              {kPower, 0.5, 1073.5, kTiny, 0.4142},
              {kPower, 0.1, 1e-20, 1, -0.0001},
              {kPower, 1e-5, 61.5, 0x1.6bd3d7ae36ec3p-1022, -0.4067}};
  for (const auto& row : rows) {
    const double off = UlpsOff(row.Of.At(row.A, row.B), row.Nearest) - row.Lacks;
    EXPECT_LT(std::abs(off), 0.95) << row.Of.Name << ' ' << row.A << ' ' << row.B;
  }
}

// The bounds are the worst of 6 million arguments of each kind, rounded up. A result that is subnormal is rounded
// twice.
TEST(Elementary, AgreesWithLongerNumbersEverywhere) {
  const double ofReference = std::numeric_limits<long double>::digits < 64 ? 0.6 : 0;  // where it is no longer
  Random random;
  for (const Range& range : kRanges) {
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

// Values and flags as Annex F of the C standard has them; kAny stands for a value that only has to be finite.
TEST(Elementary, RaisesTheFlagsOfFaultsAndNoOthers) {
  constexpr double kAny = 12345;
  constexpr int kNone = 0, kInvalid = FE_INVALID, kZero = FE_DIVBYZERO, kOver = FE_OVERFLOW;
  const struct {
    const Function& Of;
    double A, B, Value;
    int Flags;
  } rows[] = {{kExp, kInf, 0, kInf, kNone},
              {kExp, -kInf, 0, 0, kNone},
              {kExp, kNaN, 0, kNaN, kNone},
              {kExp, 0x1.62e42fefa39efp+9, 0, kAny, kNone},  // the last before the overflow
              {kExp, 0x1.62e42fefa39f0p+9, 0, kInf, kOver},
              {kExp, 746, 0, kInf, kOver},
              {kExp, 747, 0, kInf, kOver},
              {kExp, kMax, 0, kInf, kOver},
              {kExp, -0x1.74910d52d3051p+9, 0, kTiny, kNone},  // the last above half of the smallest number
              {kExp, -0x1.74910d52d3052p+9, 0, 0, kNone},
              {kExp, -747, 0, 0, kNone},
              {kExp, -kMax, 0, 0, kNone},
              {kExp, kTiny, 0, 1, kNone},
              {kLn, 0, 0, -kInf, kZero},
              {kLn, -0.0, 0, -kInf, kZero},
              {kLn, -1, 0, kNaN, kInvalid},
              {kLn, -kTiny, 0, kNaN, kInvalid},
              {kLn, -kInf, 0, kNaN, kInvalid},
              {kLn, kInf, 0, kInf, kNone},
              {kLn, kNaN, 0, kNaN, kNone},
              {kLn, kTiny, 0, kAny, kNone},
              {kLog10, -0.0, 0, -kInf, kZero},
              {kLog10, -kTiny, 0, kNaN, kInvalid},
              {kLog10, kInf, 0, kInf, kNone},
              {kLog10, kNaN, 0, kNaN, kNone},
              {kLog10, kTiny, 0, kAny, kNone},
              {kSin, kInf, 0, kNaN, kInvalid},
              {kSin, -kInf, 0, kNaN, kInvalid},
              {kSin, kNaN, 0, kNaN, kNone},
              {kSin, kTiny, 0, kTiny, kNone},
              {kSin, kMax, 0, kAny, kNone},
              {kCos, -kInf, 0, kNaN, kInvalid},
              {kCos, kNaN, 0, kNaN, kNone},
              {kCos, kMax, 0, kAny, kNone},
              {kCos, kTiny, 0, 1, kNone},
              {kTan, kInf, 0, kNaN, kInvalid},
              {kTan, kNaN, 0, kNaN, kNone},
              {kTan, kTiny, 0, kTiny, kNone},
              {kTan, 0, 0, 0, kNone},
              {kAtn, kInf, 0, 0x1.921fb54442d18p0, kNone},
              {kAtn, -kInf, 0, -0x1.921fb54442d18p0, kNone},
              {kAtn, kNaN, 0, kNaN, kNone},
              {kAtn, kMax, 0, 0x1.921fb54442d18p0, kNone},
              {kAtn, kTiny, 0, kTiny, kNone},
              {kPower, 0, 0, 1, kNone},
              {kPower, kNaN, 0, 1, kNone},
              {kPower, 1, kNaN, 1, kNone},
              {kPower, kNaN, 1, kNaN, kNone},
              {kPower, kNaN, 2, kNaN, kNone},
              {kPower, kNaN, 1.5, kNaN, kNone},
              {kPower, 2, kNaN, kNaN, kNone},
              {kPower, 0, 1.5, 0, kNone},
              {kPower, -0.0, 3, -0.0, kNone},
              {kPower, -0.0, 4, 0, kNone},
              {kPower, 0, -1, kInf, kZero},
              {kPower, -0.0, -3, -kInf, kZero},
              {kPower, 0, -0.5, kInf, kZero},
              {kPower, 0, kInf, 0, kNone},
              {kPower, -1, 0.5, kNaN, kInvalid},
              {kPower, -kMax, 1e-300, kNaN, kInvalid},
              {kPower, -kInf, 0.5, kInf, kNone},
              {kPower, -kInf, 3, -kInf, kNone},
              {kPower, -kInf, -3, -0.0, kNone},
              {kPower, kInf, -0.1, 0, kNone},
              {kPower, -1, kInf, 1, kNone},
              {kPower, -1, 0x1p60, 1, kNone},
              {kPower, -1, 0x1.fffffffffffffp52, -1, kNone},
              {kPower, 0.5, -kInf, kInf, kNone},
              {kPower, -2, -kInf, 0, kNone},
              {kPower, 1, kMax, 1, kNone},
              {kPower, 1.5, kMax, kInf, kOver},
              {kPower, 1.5, -kMax, 0, kNone},
              {kPower, 0x1.0000000000001p0, 0x1p70, kInf, kOver},
              {kPower, 0x1.fffffffffffffp-1, 0x1p70, 0, kNone},
              {kPower, 7, kTiny, 1, kNone},
              {kPower, 2, 1024, kInf, kOver},
              {kPower, 2, 0x1.fffffffffffffp9, kAny, kNone},
              {kPower, -10, 309, -kInf, kOver},
              {kPower, 10, 1e5, kInf, kOver},
              {kPower, 10, -1e5, 0, kNone},
              {kPower, 1e200, 2, kInf, kOver},
              {kPower, kTiny, -1, kInf, kOver},
              {kPower, kTiny, 1, kTiny, kNone},
              {kPower, kMax, 1, kMax, kNone}};
  const auto check = [&](const auto& row, const char* form, auto&& value) {
    ClearFaultFlags();
    const double y = value();
    const int flags = std::fetestexcept(kFaultFlags);
    ClearFaultFlags();
    EXPECT_EQ(flags, row.Flags) << row.Of.Name << form << ' ' << row.A << ' ' << row.B;
    const bool right = row.Value == kAny       ? std::isfinite(y)
                       : std::isnan(row.Value) ? std::isnan(y)
                                               : SameBits(y, row.Value);
    EXPECT_TRUE(right) << row.Of.Name << form << ' ' << row.A << ' ' << row.B << " gives " << y;
  };
  for (const auto& row : rows) {
    check(row, "", [&] { return row.Of.At(row.A, row.B); });
    for (const Function* function : {&row.Of, row.Of.At == Power ? &kFixedPower : &row.Of}) {
      check(row, " in a block", [&] {  // among neighbours that raise nothing
        Column a(9, 0.75), b(9, 1.25), y(9);
        a[5] = row.A, b[5] = row.B;
        function->Block(a.data(), b.data(), y.data(), 9);
        return y[5];
      });
    }
  }
}

// Every length and place, special values among ordinary ones and blocks of either; also in place. Nothing is written
// beyond the end.
TEST(Elementary, GivesTheSameBitsInABlock) {
  const double special[] = {0,     -0.0,  1,     2,      -1,        -2,   0.5,  3,    kTiny, -kTiny, kInf,
                            -kInf, kNaN,  kMax,  -kMax,  0x1p-1022, 8192, 8193, 710,  -720,  -746,   1e5,
                            -1e17, 1e300, 1e-30, 0x1p70, -33,       0.9,  1e22, -0.3, 745,   1.5};
  constexpr std::size_t kMost = 1100;
  Random random;
  const auto draw = [&](bool odd) {
    if (odd) return special[random.Word() % std::size(special)];
    return random.Word() % 2 ? random.Between(-6, 6) : random.Between(0.001, 300);
  };
  for (const Function* function : kFunctions) {
    for (const unsigned odd : {0U, 1U, 8U}) {  // of 8
      Column a(kMost + 4), b(kMost + 4), expected(kMost + 4);
      for (std::size_t i = 0; i < a.size(); ++i) {
        a[i] = draw(random.Word() % 8 < odd);
        b[i] = function == &kFixedPower && i % 7 != 0 ? b[i - 1] : draw(random.Word() % 8 < odd);
        expected[i] = function->At(a[i], b[i]);
      }
      const auto compare = [&](std::size_t from, std::size_t n) {
        Column apart(n + 1, 77), inPlace(a.begin() + static_cast<std::ptrdiff_t>(from), a.end());
        function->Block(a.data() + from, b.data() + from, apart.data(), n);
        function->Block(inPlace.data(), b.data() + from, inPlace.data(), n);
        for (std::size_t i = 0; i < n; ++i) {
          ASSERT_TRUE(SameBits(apart[i], expected[from + i]))
              << function->Name << ' ' << a[from + i] << ' ' << b[from + i] << ", place " << i << " of " << n;
          ASSERT_TRUE(SameBits(inPlace[i], expected[from + i])) << function->Name << " in place";
        }
        EXPECT_EQ(apart[n], 77);
        EXPECT_TRUE(SameBits(inPlace[n], a[from + n]));
      };
      for (std::size_t n = 0; n <= 40; ++n)
        for (std::size_t from = 0; from < 4; ++from) compare(from, n);
      for (const std::size_t n : {255U, 256U, 257U, 1100U}) compare(1, n);
    }
  }
}

// One number for the bits of some 90000 results. Another machine, compiler or option that changes a single one changes
// it; so does every change of a method, after which it is to be set anew.
TEST(Elementary, HasTheBitsItAlwaysHad) {
  std::uint64_t hash = 0xCBF29CE484222325;  // FNV-1a
  Random random;
  for (const Range& range : kRanges) {
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
  EXPECT_EQ(hash, 0xD32532FE787AB7C6);
}

}  // namespace
}  // namespace quorvex
