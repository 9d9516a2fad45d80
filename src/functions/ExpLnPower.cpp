// Exp, Ln and Power: tables that the compiler computes, and short series between their entries. Measured against 64-bit
// mantissas over 2 million arguments of each kind, the worst errors are 0.51 units in the last place, and 0.75 where
// the result is subnormal and so is rounded twice.
//
// Method: P. T. P. Tang, ACM Trans. Math. Softw. 15, 1989 (exp) and 16, 1990 (log); for the power the logarithm and
// its product with the exponent are carried as sums of two doubles.

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "functions/BitPatterns.h"
#include "functions/BlockLoop.h"
#include "functions/DoubleDouble.h"
#include "functions/Elementary.h"

namespace quorvex {
namespace {

constexpr Bits kOne = BitsOf(1.0);
constexpr Bits kFraction = ~Bits{0} >> 12;
constexpr Bits kSmallestNormal = BitsOf(std::numeric_limits<double>::min());

constexpr double kRound = 0x1.8p52;  // adding it leaves a whole number in the last bits

constexpr DoubleDouble kLn2{0x1.62e42fefa39efp-1, 0x1.abc9e3b39803fp-56};

// ---- exponential

constexpr int kSteps = 128;  // to the power of two

struct ExpTable {
  std::array<Bits, kSteps> Power;   // 2^(j/128)
  std::array<double, kSteps> Rest;  // what that lacks, relative to it
};

consteval ExpTable MakeExpTable() {
  ExpTable table{};
  for (int j = 0; j < kSteps; ++j) {
    const DoubleDouble x = DoubleDouble{j / double{kSteps}, 0} * kLn2;
    DoubleDouble power{1, 0}, term{1, 0};
    // x is below ln(2), so that 30 terms reach beyond the 106 bits of the sum.
    for (int k = 1; k < 30; ++k) {
      term = term * x / k;
      power = power + term;
    }
    table.Power[static_cast<std::size_t>(j)] = BitsOf(power.Hi);
    table.Rest[static_cast<std::size_t>(j)] = power.Lo / power.Hi;
  }
  return table;
}

constexpr ExpTable kExpTable = MakeExpTable();

// x = n*ln(2)/128 + R with |R| <= ln(2)/256, for |x| <= 2046*ln(2). n, up to 18 bits, is the end of NBits.
struct ExpArgument {
  Bits NBits;
  double R;
};

[[gnu::always_inline]] inline double ShiftedExpArgument(double x) {
  constexpr double kPerStep = 0x1.71547652b82fep7;  // 128/ln(2)
  return x * kPerStep + kRound;
}

template <class Fma>
[[gnu::always_inline]] inline ExpArgument ReduceExp(Fma fma, double x) {
  constexpr double kStep = 0x1.62e42fefcp-8;  // ln(2)/128 in two parts; n times the first, of 35 bits, is exact
  constexpr double kStepRest = -0x1.c610ca86c3899p-44;
  const double shifted = ShiftedExpArgument(x);
  const double n = shifted - kRound;
  return {BitsOf(shifted), fma(n, -kStepRest, fma.OfWhole(n, -kStep, x))};
}

// Where the table has 2^(j/128), j being the last 7 bits of n.
[[gnu::always_inline]] inline Bits ExpPlace(Bits nBits) { return nBits % kSteps; }

// 2^(j/128) * exp(R).
template <class Fma>
[[gnu::always_inline]] inline double UnscaledExp(Fma fma, Bits place, double r) {
  const double square = r * r;
  const double second = fma(square, fma(r, 1.0 / 120, 1.0 / 24), fma(r, 1.0 / 6, 0.5));
  const double less1 = fma(square, second, r + kExpTable.Rest[place]);
  const double power = DoubleOf(kExpTable.Power[place]);
  return fma(power, less1, power);
}

// 2^(n/128) * exp(R). The power of two comes in two factors, so that results overflow, or lose bits to underflow, in
// the last multiplication and nowhere else.
template <class Fma>
[[gnu::always_inline]] inline double ScaledExp(Fma fma, ExpArgument x) {
  const double y = UnscaledExp(fma, ExpPlace(x.NBits), x.R);
  const Bits half = x.NBits / (2 * kSteps), otherHalf = x.NBits / kSteps - half;
  return y * DoubleOf((half << 52) + kOne) * DoubleOf((otherHalf << 52) + kOne);
}

// The same where it is well within range: the power of two goes into the exponent.
template <class Fma>
[[gnu::always_inline]] inline double ModestlyScaledExp(Fma fma, Bits place, ExpArgument x) {
  return DoubleOf(BitsOf(UnscaledExp(fma, place, x.R)) + ((x.NBits / kSteps) << 52));
}

// Beyond +-kBeyondExp, exp(x) overflows or vanishes. There 2046*ln(2) stands for x: both factors of the power of two
// are 2^1023 or 0 then, and vanishing does not pass through slow subnormal numbers.
constexpr double kBeyondExp = 746, kHeldExp = 0x1.628b76e3a7b61p10;
constexpr double kModestExp = 700;

struct ModestExpKernel {
  [[gnu::always_inline]] static bool Ordinary(double x) { return MagnitudeBits(x) <= BitsOf(kModestExp); }
  [[gnu::always_inline]] static Bits Place(double x) { return ExpPlace(BitsOf(ShiftedExpArgument(x))); }
  [[gnu::always_inline]] static double At(auto fma, Bits place, double x) {
    return ModestlyScaledExp(fma, place, ReduceExp(fma, x));
  }
};

struct ExpKernel {
  using Modest = ModestExpKernel;

  [[gnu::always_inline]] static bool Ordinary(double x) { return MagnitudeBits(x) < kInfinite; }

  [[gnu::always_inline]] static double At(auto fma, double x) {
    const Bits magnitude = MagnitudeBits(x);
    const Bits held = Select(Mask(magnitude > BitsOf(kBeyondExp)), BitsOf(kHeldExp), magnitude);
    return ScaledExp(fma, ReduceExp(fma, DoubleOf(held | (BitsOf(x) & kSign))));
  }

  [[gnu::noinline]] static double Otherwise(double x) { return BitsOf(x) == (kInfinite | kSign) ? 0 : x + x; }
};

// ---- logarithm

// The range of one power of two, from 0.6875 on, is cut at 256 of its bits' prefixes. For each part c has few bits, is
// near the inverse, and is 1 on both sides of 1, so that ln(x) = ln(1+r) - ln(c) has no cancellation there.
constexpr Bits kLowest = BitsOf(0.6875);
constexpr int kParts = 256;

struct LnTable {
  std::array<double, kParts> C;
  std::array<double, kParts> LnHi, LnLo;  // -ln(c): a multiple of 2^-42, and the rest
};

consteval LnTable MakeLnTable() {
  LnTable table{};
  for (std::size_t i = 0; i < kParts; ++i) {
    const double from = DoubleOf(kLowest + (Bits{i} << 44));
    const double to = DoubleOf(kLowest + (Bits{i + 1} << 44));
    // 8 or 9 bits after the point: then r = z*c - 1, below 2^-8, fits into a double.
    const double unit = from < 1 ? 0x1p8 : 0x1p9;
    const double c = from == 1 || to == 1 ? 1 : static_cast<int>(2 / (from + to) * unit + 0.5) / unit;
    const DoubleDouble s = DoubleDouble{1 - c, 0} / (1 + c);  // -ln(c) = 2*artanh(s)
    DoubleDouble power = s, sum = s;
    for (int k = 3; k < 50; k += 2) {
      power = power * s * s;
      sum = sum + power / k;
    }
    // The last bit of 0x1.8p10 is 2^-42: adding and taking it off leaves a multiple of that.
    const double rounded = (sum.Hi * 2 + 0x1.8p10) - 0x1.8p10;
    table.C[i] = c;
    table.LnHi[i] = rounded;
    table.LnLo[i] = (sum.Hi * 2 - rounded) + sum.Lo * 2;
  }
  return table;
}

constexpr LnTable kLnTable = MakeLnTable();

// x = 2^k/c * (1+R) with ln(2^k/c) = Hi + Lo, and R exact.
struct LnArgument {
  double Hi, Lo, R;
};

// From the bits of a normal x. For a subnormal one those of 2^52*x, less 52 powers of two, will do. Powers of two are
// added so that the difference does not wrap for any of them.
constexpr Bits kLnBias = 2048;
[[gnu::always_inline]] inline Bits ShiftedLnArgument(Bits x) { return x - kLowest + (kLnBias << 52); }
[[gnu::always_inline]] inline Bits LnPlace(Bits x) { return (ShiftedLnArgument(x) >> 44) % kParts; }

template <class Fma>
[[gnu::always_inline]] inline LnArgument ReduceLn(Fma fma, Bits place, Bits x) {
  constexpr double kHi = 0x1.62e42fefa38p-1, kLo = 0x1.ef35793c7673p-45;  // ln(2), the first with 42 bits
  const Bits shifted = ShiftedLnArgument(x);
  const double k = DoubleOf((shifted >> 52) | BitsOf(0x1p52)) - (0x1p52 + kLnBias);
  const double z = DoubleOf((shifted & kFraction) + kLowest);
  return {fma.OfWhole(k, kHi, kLnTable.LnHi[place]), fma(k, kLo, kLnTable.LnLo[place]),
          fma.Whole(z, kLnTable.C[place], -1)};
}

[[gnu::always_inline]] inline Bits NormalizedBits(double magnitude) {
  return BitsOf(magnitude) < kSmallestNormal ? BitsOf(magnitude * 0x1p52) - (Bits{52} << 52) : BitsOf(magnitude);
}

struct LnKernel {
  [[gnu::always_inline]] static bool Ordinary(double x) {
    return BitsOf(x) - kSmallestNormal < kInfinite - kSmallestNormal;
  }

  [[gnu::always_inline]] static double OfBits(auto fma, Bits place, Bits x) {
    const auto [hi, lo, r] = ReduceLn(fma, place, x);
    const DoubleDouble main = OrderedSum(hi, r);
    const double square = r * r;
    const double high = fma(square, fma(r, 1.0 / 7, -1.0 / 6), fma(r, 0.2, -0.25));
    return main.Hi + fma(square, fma(square, high, fma(r, 1.0 / 3, -0.5)), main.Lo + lo);
  }

  [[gnu::always_inline]] static Bits Place(double x) { return LnPlace(BitsOf(x)); }
  [[gnu::always_inline]] static double At(auto fma, Bits place, double x) { return OfBits(fma, place, BitsOf(x)); }

  [[gnu::noinline]] static double Otherwise(double x) {
    // These quotients raise the flags that stand for a fault: division by zero here, an invalid operation for x < 0.
    if (x == 0) return -1 / std::abs(x);
    if (std::isnan(x)) return x + x;
    if (x < 0) return (x - x) / (x - x);
    if (std::isinf(x)) return x;
    const Bits bits = NormalizedBits(x);
    return OfBits(FusedBySteps(), LnPlace(bits), bits);
  }
};

// ---- power

// ln(x) to 2^-66 of it.
template <class Fma>
[[gnu::always_inline]] inline DoubleDouble ExtendedLn(Fma fma, Bits place, Bits x) {
  const auto [hi, lo, r] = ReduceLn(fma, place, x);
  const DoubleDouble square = Product(fma, r, r);
  const DoubleDouble first = OrderedSum(hi, r);
  const double second = fma.OfWhole(square.Hi, -0.5, first.Hi);
  const double secondRest = fma.OfWhole(square.Hi, -0.5, first.Hi - second);
  const double middle = fma(square.Hi, fma(r, -1.0 / 6, 0.2), fma(r, -0.25, 1.0 / 3));
  const double high = fma(square.Hi, 1.0 / 9, fma(r, -0.125, 1.0 / 7));
  const double tail = fma(square.Hi * square.Hi, high, middle);
  const double rest = (first.Lo + lo) + fma.OfWhole(square.Lo, -0.5, secondRest);
  return OrderedSum(second, fma(square.Hi * r, tail, rest));
}

// The logarithm times 1/ln(10), both as sums of two doubles, so that the result is rounded but once.
struct Log10Kernel {
  [[gnu::always_inline]] static bool Ordinary(double x) { return LnKernel::Ordinary(x); }

  [[gnu::always_inline]] static double OfBits(auto fma, Bits place, Bits x) {
    constexpr DoubleDouble kInverse{0x1.bcb7b1526e50ep-2, 0x1.95355baaafad3p-57};
    const DoubleDouble ln = ExtendedLn(fma, place, x);
    const DoubleDouble product = Product(fma, ln.Hi, kInverse.Hi);
    return product.Hi + fma(ln.Lo, kInverse.Hi, fma(ln.Hi, kInverse.Lo, product.Lo));
  }

  [[gnu::always_inline]] static Bits Place(double x) { return LnPlace(BitsOf(x)); }
  [[gnu::always_inline]] static double At(auto fma, Bits place, double x) { return OfBits(fma, place, BitsOf(x)); }

  [[gnu::noinline]] static double Otherwise(double x) {
    const bool subnormal = x != 0 && BitsOf(x) < kSmallestNormal;
    const Bits bits = NormalizedBits(x);
    return subnormal ? OfBits(FusedBySteps(), LnPlace(bits), bits) : LnKernel::Otherwise(x);
  }
};

// Exponents beyond these bounds lead to 1 or out of range whatever the base is, unless it is 1 itself.
constexpr double kSmallestExponent = 0x1p-66, kLargestExponent = 0x1p66;

// exp(b*ln) for an exponent within those bounds.
template <class Fma>
[[gnu::always_inline]] inline double ExpOfProduct(Fma fma, double b, DoubleDouble ln) {
  const DoubleDouble product = Product(fma, b, ln.Hi);
  const Bits tooMuch = Mask(MagnitudeBits(product.Hi) > BitsOf(kBeyondExp));
  ExpArgument argument = ReduceExp(fma, Select(tooMuch, std::copysign(kHeldExp, product.Hi), product.Hi));
  // The product's low half is too small for x itself and joins what the reduction left of it.
  argument.R += Select(tooMuch, 0.0, fma(b, ln.Lo, product.Lo));
  return ScaledExp(fma, argument);
}

// The same for a modest product.
[[gnu::always_inline]] inline bool IsModestProduct(double b, DoubleDouble ln) {
  return MagnitudeBits(b * ln.Hi) <= BitsOf(kModestExp);
}

[[gnu::always_inline]] inline Bits PlaceOfModestProduct(double b, DoubleDouble ln) {
  return ExpPlace(BitsOf(ShiftedExpArgument(b * ln.Hi)));
}

template <class Fma>
[[gnu::always_inline]] inline double ExpOfModestProduct(Fma fma, Bits place, double b, DoubleDouble ln) {
  const DoubleDouble product = Product(fma, b, ln.Hi);
  ExpArgument argument = ReduceExp(fma, product.Hi);
  argument.R += fma(b, ln.Lo, product.Lo);
  return ModestlyScaledExp(fma, place, argument);
}

[[gnu::always_inline]] inline bool OrdinaryExponent(double b) {
  const Bits aboveSmallest = MagnitudeBits(b) - BitsOf(kSmallestExponent);
  return aboveSmallest <= BitsOf(kLargestExponent) - BitsOf(kSmallestExponent) && BitsOf(b) != BitsOf(1) &&
         BitsOf(b) != BitsOf(2);
}

bool IsWhole(double b) { return std::floor(b) == b; }
bool IsOdd(double b) { return IsWhole(b) && !IsWhole(b / 2); }

[[gnu::noinline]] double PowerOtherwise(double a, double b) {
  // Before NaNs are looked for: by IEEE 754 these powers are 1 whatever the other number is.
  if (b == 0 || a == 1) return 1;
  if (b == 1) return a;
  if (b == 2) return a * a;
  if (std::isnan(a) || std::isnan(b)) return a + b;
  const double magnitude = std::abs(a);
  if (std::isinf(b)) return magnitude == 1 ? 1 : (magnitude > 1) == (b > 0) ? std::abs(b) : 0;
  const bool negative = std::signbit(a) && IsOdd(b);
  double power;
  if (a == 0 || std::isinf(a)) {
    power = b > 0 ? magnitude : 1 / magnitude;
  } else if (a < 0 && !IsWhole(b)) {
    return (a - a) / (a - a);
  } else {
    const double held = std::clamp(std::abs(b), kSmallestExponent, kLargestExponent);
    const FusedBySteps fma;
    const Bits bits = NormalizedBits(magnitude);
    power = ExpOfProduct(fma, std::copysign(held, b), ExtendedLn(fma, LnPlace(bits), bits));
  }
  return negative ? -power : power;
}

// A base and an exponent: whole ones of negative bases, and other bases.
struct NegativePowerKernel {
  [[gnu::always_inline]] static bool Ordinary(double a, double b) {
    return LnKernel::Ordinary(-a) && OrdinaryExponent(b) && MagnitudeBits(b) <= BitsOf(0x1p51) &&
           (b + kRound) - kRound == b;
  }
  [[gnu::always_inline]] static Bits Place(double a, double) { return LnPlace(BitsOf(-a)); }
  [[gnu::always_inline]] static double At(auto fma, Bits place, double a, double b) {
    const double power = ExpOfProduct(fma, b, ExtendedLn(fma, place, BitsOf(-a)));
    return DoubleOf(BitsOf(power) | BitsOf(b + kRound) << 63);  // the sign where b is odd
  }
  static double Otherwise(double a, double b) { return PowerOtherwise(a, b); }
};

struct PowerKernel {
  using Other = NegativePowerKernel;
  using Others = NegativePowerKernel;

  [[gnu::always_inline]] static bool Ordinary(double a, double b) {
    return LnKernel::Ordinary(a) && OrdinaryExponent(b);
  }
  [[gnu::always_inline]] static Bits Place(double a, double) { return LnPlace(BitsOf(a)); }
  [[gnu::always_inline]] static DoubleDouble First(auto fma, Bits place, double a, double) {
    return ExtendedLn(fma, place, BitsOf(a));
  }
  [[gnu::always_inline]] static double Second(auto fma, DoubleDouble ln, double, double b) {
    return ExpOfProduct(fma, b, ln);
  }
  [[gnu::always_inline]] static bool IsModest(DoubleDouble ln, double, double b) { return IsModestProduct(b, ln); }
  [[gnu::always_inline]] static Bits SecondPlace(DoubleDouble ln, double, double b) {
    return PlaceOfModestProduct(b, ln);
  }
  [[gnu::always_inline]] static double ModestSecond(auto fma, Bits place, DoubleDouble ln, double, double b) {
    return ExpOfModestProduct(fma, place, b, ln);
  }
};

// One ordinary exponent for all. The sign of a base is dropped where the exponent is whole, and given back to the power
// where it is odd.
struct FixedPowerKernel {
  explicit FixedPowerKernel(double exponent)
      : b(exponent), dropped(IsWhole(exponent) ? kSign : 0), given(IsOdd(exponent) ? kSign : 0) {}

  [[gnu::always_inline]] bool Ordinary(double a) const { return LnKernel::Ordinary(DoubleOf(BitsOf(a) & ~dropped)); }
  [[gnu::always_inline]] Bits Place(double a) const { return LnPlace(BitsOf(a) & ~dropped); }
  [[gnu::always_inline]] DoubleDouble First(auto fma, Bits place, double a) const {
    return ExtendedLn(fma, place, BitsOf(a) & ~dropped);
  }
  [[gnu::always_inline]] double Second(auto fma, DoubleDouble ln, double a) const {
    return WithSign(ExpOfProduct(fma, b, ln), a);
  }
  [[gnu::always_inline]] bool IsModest(DoubleDouble ln, double) const { return IsModestProduct(b, ln); }
  [[gnu::always_inline]] Bits SecondPlace(DoubleDouble ln, double) const { return PlaceOfModestProduct(b, ln); }
  [[gnu::always_inline]] double ModestSecond(auto fma, Bits place, DoubleDouble ln, double a) const {
    return WithSign(ExpOfModestProduct(fma, place, b, ln), a);
  }
  double Otherwise(double a) const { return PowerOtherwise(a, b); }

  double b;
  Bits dropped, given;

 private:
  [[gnu::always_inline]] double WithSign(double power, double a) const {
    return DoubleOf(BitsOf(power) ^ (BitsOf(a) & given));
  }
};

}  // namespace

double Exp(double x) { return blocks::CallKernel<ExpKernel>(x); }
double Ln(double x) { return blocks::CallKernel<LnKernel>(x); }
double Log10(double x) { return blocks::CallKernel<Log10Kernel>(x); }
double Power(double a, double b) { return blocks::CallKernel<PowerKernel>(a, b); }

void ExpBlock(const double* x, double* y, std::size_t n) { blocks::Run(ExpKernel(), n, y, x); }
void LnBlock(const double* x, double* y, std::size_t n) { blocks::Run(LnKernel(), n, y, x); }
void Log10Block(const double* x, double* y, std::size_t n) { blocks::Run(Log10Kernel(), n, y, x); }
void PowerBlock(const double* a, const double* b, double* y, std::size_t n) { blocks::Run(PowerKernel(), n, y, a, b); }

void PowerBlock(const double* a, double b, double* y, std::size_t n) {
  if (OrdinaryExponent(b)) return blocks::Run(FixedPowerKernel(b), n, y, a);
  if (b == 2) {
    const auto squares = [](auto, std::size_t count, const double* from, double* to) __attribute__((always_inline)) {
      for (std::size_t i = 0; i < count; ++i) to[i] = from[i] * from[i];
    };
    AtFullWidth(squares, n, a, y);
  } else if (b == 1) {
    if (y != a) std::copy_n(a, n, y);
  } else {
    for (std::size_t i = 0; i < n; ++i) y[i] = PowerOtherwise(a[i], b);
  }
}

}  // namespace quorvex
