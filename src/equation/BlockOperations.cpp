#include "equation/BlockOperations.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

#include "core/Limits.h"
#include "core/VectorWidth.h"
#include "equation/IntrinsicFunctions.h"
#include "equation/Operators.h"
#include "functions/BitPatterns.h"
#include "functions/Elementary.h"

namespace quorvex {
namespace {

// An operand that is a value per point, and one that is the same at all: each pair of them has a loop of its own.
struct PerPoint {
  const double* Points;
  [[gnu::always_inline]] double At(std::size_t i) const { return Points[i]; }
};
struct ForAll {
  double Value;
  [[gnu::always_inline]] double At(std::size_t) const { return Value; }
};

template <class Use>
[[gnu::always_inline]] inline void WithShape(const BlockOperand& a, Use use) {
  if (a.Points != nullptr)
    use(PerPoint{a.Points});
  else
    use(ForAll{a.Value});
}

// out[i] = Operation(operands...[i]), in vectors of full width: they change no bit, since each result is one sequence
// of IEEE operations.
template <class Operation, class... Operands>
void Loop(std::size_t n, double* out, Operands... operands) {
  if constexpr ((std::is_same_v<Operands, ForAll> && ...)) {
    std::fill_n(out, n, Operation()(operands.Value...));
  } else {
    const auto loop = [](auto, std::size_t count, double* to, auto... of) __attribute__((always_inline)) {
      for (std::size_t i = 0; i < count; ++i) to[i] = Operation()(of.At(i)...);
    };
    AtFullWidth(loop, n, out, operands...);
  }
}

template <class Operation>
void Over(const BlockOperand& a, std::size_t n, double* out, Operation) {
  WithShape(a, [&](auto x) { Loop<Operation>(n, out, x); });
}

template <class Operation>
void Over(const BlockOperand& a, const BlockOperand& b, std::size_t n, double* out, Operation) {
  WithShape(a, [&](auto x) { WithShape(b, [&](auto y) { Loop<Operation>(n, out, x, y); }); });
}

// 1/x for a power of two whose inverse is one, too, else 0. Multiplied by that, which is quick, a number gives what it
// gives divided by x.
double InverseOfPowerOfTwo(double x) {
  const bool isPower = (BitsOf(x) & (~Bits{0} >> 12)) == 0;
  const bool isInvertible = MagnitudeBits(x) >= BitsOf(0x1p-1022) && MagnitudeBits(x) <= BitsOf(0x1p1022);
  return isPower && isInvertible ? 1 / x : 0;
}

void PowerOverBlock(const BlockOperand& a, const BlockOperand& b, std::size_t n, double* out) {
  if (a.Points != nullptr && b.Points != nullptr) {
    PowerBlock(a.Points, b.Points, out, n);
  } else if (a.Points != nullptr) {
    PowerBlock(a.Points, b.Value, out, n);
  } else if (b.Points != nullptr && n > 1) {
    double base[kBlock];  // the loop over two arrays is several times as fast as one by one
    std::fill_n(base, std::min(n, kBlock), a.Value);
    for (std::size_t i = 0; i < n; i += kBlock) PowerBlock(base, b.Points + i, out + i, std::min(kBlock, n - i));
  } else {
    std::fill_n(out, n, Power(a.Value, b.At(0)));
  }
}

// The hyperbolic functions, quotients of e^x + e^-x and e^x - e^-x.
template <auto quotient>
void Hyperbolic(const double* x, double* y, std::size_t n) {
  double held[kBlock], rising[kBlock], falling[kBlock];
  for (std::size_t first = 0; first < n; first += kBlock) {
    const std::size_t count = std::min(kBlock, n - first);
    for (std::size_t i = 0; i < count; ++i) {
      held[i] = HeldHyperbolic(x[first + i]);
      falling[i] = -held[i];
    }
    ExpBlock(held, rising, count);
    ExpBlock(falling, falling, count);
    for (std::size_t i = 0; i < count; ++i)
      y[first + i] = quotient(rising[i] + falling[i], HyperbolicDifference(held[i], rising[i], falling[i]));
  }
}

// The block function behind a function of the language, where there is one.
using BlockFunction = void (*)(const double* x, double* y, std::size_t n);

BlockFunction BlockFunctionOf(int code) {
  switch (code) {
    case 2:
      return ExpBlock;
    case 6:
    case 7:
      return LnBlock;
    case 8:
      return Log10Block;
    case 11:
      return [](const double* x, double* y, std::size_t n) {
        for (std::size_t i = 0; i < n; ++i) y[i] = Sqr(x[i]);
      };
    case 12:
      return CosBlock;
    case 13:
      return SinBlock;
    case 14:
      return TanBlock;
    case 17:
      return AtnBlock;
    case 24:
      return Hyperbolic<[](double, double difference) { return difference / 2; }>;
    case 25:
      return Hyperbolic<[](double sum, double) { return sum / 2; }>;
    case 26:
      return Hyperbolic<[](double sum, double difference) { return difference / sum; }>;
    case 27:
      return Hyperbolic<[](double sum, double) { return 2 / sum; }>;
    case 28:
      return Hyperbolic<[](double, double difference) { return 2 / difference; }>;
    case 29:
      return Hyperbolic<[](double sum, double difference) { return sum / difference; }>;
    default:
      return nullptr;
  }
}

}  // namespace

void UnaryOverBlock(int code, const BlockOperand& a, std::size_t n, double* out) {
  if (code == kNegate) return Over(a, n, out, [](double x) { return -x; });
  for (std::size_t i = 0; i < n; ++i) out[i] = UnaryOperation(code, a.At(i));
}

void BinaryOverBlock(int code, const BlockOperand& a, const BlockOperand& b, std::size_t n, double* out) {
  switch (code) {
    case kPower:
      return PowerOverBlock(a, b, n, out);
    case kAdd:
      return Over(a, b, n, out, [](double x, double y) { return x + y; });
    case kSubtract:
      return Over(a, b, n, out, [](double x, double y) { return x - y; });
    case kMultiply:
      return Over(a, b, n, out, [](double x, double y) { return x * y; });
    case kDivide:
      if (b.Points == nullptr)
        if (const double inverse = InverseOfPowerOfTwo(b.Value); inverse != 0)
          return BinaryOverBlock(kMultiply, a, {nullptr, inverse}, n, out);
      return Over(a, b, n, out, [](double x, double y) { return x / y; });
    case kEqual:
      return Over(a, b, n, out, [](double x, double y) { return Truth(x == y); });
    case kLess:
      return Over(a, b, n, out, [](double x, double y) { return Truth(x < y); });
    case kGreater:
      return BinaryOverBlock(kLess, b, a, n, out);
    case kUnequal:
      return Over(a, b, n, out, [](double x, double y) { return Truth(x != y); });
    case kLessOrEqual:
      return Over(a, b, n, out, [](double x, double y) { return Truth(x <= y); });
    case kGreaterOrEqual:
      return BinaryOverBlock(kLessOrEqual, b, a, n, out);
    default:
      for (std::size_t i = 0; i < n; ++i) out[i] = BinaryOperation(code, a.At(i), b.At(i));
  }
}

void FunctionOverBlock(int code, const BlockOperand (&arguments)[3], std::size_t n, double* out) {
  const BlockFunction overBlock = BlockFunctionOf(code);
  if (overBlock != nullptr && arguments[0].Points != nullptr) return overBlock(arguments[0].Points, out, n);
  const IntrinsicFunction& function = IntrinsicFunctions()[static_cast<std::size_t>(code - 1)];
  // No model that draws random numbers is computed by blocks.
  RandomState unused;
  for (std::size_t i = 0; i < n; ++i) {
    double values[3] = {};
    for (int k = 0; k < function.Arguments; ++k) values[k] = arguments[k].At(i);
    out[i] = function.Call(values, unused);
  }
}

}  // namespace quorvex
