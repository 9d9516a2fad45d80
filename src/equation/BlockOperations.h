#pragma once

#include <cstddef>

namespace quorvex {

// One operand of an operation over a block of points: a value per point, or one value for all of them.
struct BlockOperand {
  const double* Points;  // null: Value stands for every point
  double Value;

  double At(std::size_t i) const { return Points != nullptr ? Points[i] : Value; }
};

// The operators and functions of the language over `n` points, each result the same bits as the operation gives at one
// point. `out` may be one of the operands. Faults show in the processor's flags; what throws at a point throws here.
void UnaryOverBlock(int code, const BlockOperand& a, std::size_t n, double* out);
void BinaryOverBlock(int code, const BlockOperand& a, const BlockOperand& b, std::size_t n, double* out);
void FunctionOverBlock(int code, const BlockOperand (&arguments)[3], std::size_t n, double* out);

}  // namespace quorvex
