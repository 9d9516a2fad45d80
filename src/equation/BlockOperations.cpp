#include "equation/BlockOperations.h"

#include "equation/Elementary.h"
#include "equation/IntrinsicFunctions.h"
#include "equation/Operators.h"

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
  } else {
    for (std::size_t i = 0; i < n; ++i) out[i] = Power(a.Value, b.At(i));
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

void FunctionOverBlock(int code, const BlockOperand (&arguments)[3], std::size_t n, double* out) {
  const BlockFunction overBlock = BlockFunctionOf(code);
  if (overBlock != nullptr && arguments[0].Points != nullptr) return overBlock(arguments[0].Points, out, n);
  const IntrinsicFunction& function = IntrinsicFunctions()[static_cast<std::size_t>(code - 1)];
  RandomState unused;
  for (std::size_t i = 0; i < n; ++i) {
    double values[3] = {};
    for (int k = 0; k < function.Arguments; ++k) values[k] = arguments[k].At(i);
    out[i] = function.Call(values, unused);
  }
}

namespace {

[[gnu::always_inline]] inline double Dot(const double* a, const double* b, std::size_t n) {
  double sums[8] = {};
  std::size_t i = 0;
  for (; i + 8 <= n; i += 8)
    for (std::size_t lane = 0; lane < 8; ++lane) sums[lane] += a[i + lane] * b[i + lane];
  for (std::size_t lane = 0; i < n; ++i, ++lane) sums[lane] += a[i] * b[i];
  return ((sums[0] + sums[4]) + (sums[2] + sums[6])) + ((sums[1] + sums[5]) + (sums[3] + sums[7]));
}

#ifdef __x86_64__
[[gnu::target("avx2")]] double DotWide(const double* a, const double* b, std::size_t n) { return Dot(a, b, n); }
#endif

}  // namespace

double BlockDot(const double* a, const double* b, std::size_t n) {
#ifdef __x86_64__
  if (__builtin_cpu_supports("avx2")) return DotWide(a, b, n);
#endif
  return Dot(a, b, n);
}

}  // namespace quorvex
