#include "equation/Operators.h"

#include <cstdint>
#include <limits>

#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "functions/Elementary.h"

namespace quorvex {
namespace {

// Quotient and remainder of the rounded operands, truncated toward zero.
struct Division {
  Division(double a, double b) : dividend(RoundToInt32(a)), divisor(RoundToInt32(b)) {
    // The second is the one quotient of 32-bit numbers that does not fit into 32 bits.
    if (divisor == 0 || (divisor == -1 && dividend == std::numeric_limits<std::int32_t>::min())) throw NumericFault();
  }
  std::int32_t dividend, divisor;
};

}  // namespace

double UnaryOperation(int code, double a) { return code == kNegate ? -a : static_cast<double>(~RoundToInt32(a)); }

double BinaryOperation(int code, double a, double b) {
  switch (code) {
    case kPower:
      return Power(a, b);
    case kAdd:
      return a + b;
    case kSubtract:
      return a - b;
    case kMultiply:
      return a * b;
    case kDivide:
      return a / b;
    case kIntegerDivide: {
      const Division d(a, b);
      return d.dividend / d.divisor;
    }
    case kMod: {
      const Division d(a, b);
      return d.dividend % d.divisor;
    }
    case kEqual:
      return Truth(a == b);
    case kLess:
      return Truth(a < b);
    case kGreater:
      return Truth(a > b);
    case kUnequal:
      return Truth(a != b);
    case kLessOrEqual:
      return Truth(a <= b);
    case kGreaterOrEqual:
      return Truth(a >= b);
    case kAnd:
      return RoundToInt32(a) & RoundToInt32(b);
    case kOr:
      return RoundToInt32(a) | RoundToInt32(b);
    case kXor:
      return RoundToInt32(a) ^ RoundToInt32(b);
    case kEqv:
      return ~(RoundToInt32(a) ^ RoundToInt32(b));
    case kImp:
      return ~RoundToInt32(a) | RoundToInt32(b);
    default:
      throw NumericFault();
  }
}

}  // namespace quorvex
