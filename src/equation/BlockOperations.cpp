#include "equation/BlockOperations.h"

#include <algorithm>

#include "core/Limits.h"
#include "equation/IntrinsicFunctions.h"
#include "equation/Operators.h"
#include "functions/Elementary.h"

namespace quorvex {
namespace {

// The four shapes of an operation, so that the loops run over arrays and constants alone.
template <class Operation>
[[gnu::always_inline]] inline void Shapes(const BlockOperand& a, const BlockOperand& b, std::size_t n, double* out,
                                          Operation operation) {
  const double* const x = a.Points;
  const double* const y = b.Points;
  if (x != nullptr && y != nullptr) {
    for (std::size_t i = 0; i < n; ++i) out[i] = operation(x[i], y[i]);
  } else if (x != nullptr) {
    const double value = b.Value;
    for (std::size_t i = 0; i < n; ++i) out[i] = operation(x[i], value);
  } else if (y != nullptr) {
    const double value = a.Value;
    for (std::size_t i = 0; i < n; ++i) out[i] = operation(value, y[i]);
  } else {
    const double value = operation(a.Value, b.Value);
    for (std::size_t i = 0; i < n; ++i) out[i] = value;
  }
}

// Wider instructions where the processor has them change no bit: each result is one IEEE operation.
#ifdef __x86_64__
template <class Operation>
[[gnu::target("avx2")]] void ShapesWide(const BlockOperand& a, const BlockOperand& b, std::size_t n, double* out,
                                        Operation operation) {
  Shapes(a, b, n, out, operation);
}
#endif

template <class Operation>
void Over(const BlockOperand& a, const BlockOperand& b, std::size_t n, double* out, Operation operation) {
#ifdef __x86_64__
  if (__builtin_cpu_supports("avx2")) return ShapesWide(a, b, n, out, operation);
#endif
  Shapes(a, b, n, out, operation);
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
  if (code == kNegate && a.Points != nullptr) {
    for (std::size_t i = 0; i < n; ++i) out[i] = -a.Points[i];
  } else {
    for (std::size_t i = 0; i < n; ++i) out[i] = UnaryOperation(code, a.At(i));
  }
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
      return Over(a, b, n, out, [](double x, double y) { return x / y; });
    default:
      for (std::size_t i = 0; i < n; ++i) out[i] = BinaryOperation(code, a.At(i), b.At(i));
  }
}

void AddProductOverBlock(const BlockOperand& sum, const BlockOperand& a, const BlockOperand& b, std::size_t n,
                         double* out) {
  for (std::size_t i = 0; i < n; ++i) out[i] = sum.At(i) + a.At(i) * b.At(i);
}

void QuotientOverBlock(const double* above, const double* below, double divisor, std::size_t n, double* out) {
  Over({above, 0}, {below, 0}, n, out, [divisor](double x, double y) { return (x - y) / divisor; });
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
