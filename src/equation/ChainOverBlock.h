#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "equation/BlockOperations.h"

namespace quorvex {

// What one step of a chain does with the value so far, here called v, and its operand p.
enum class ChainOp : std::uint8_t {
  Add,           // v + p
  Subtract,      // v - p
  SubtractFrom,  // p - v
  Multiply,      // v * p
  Divide,        // v / p
  DivideInto,    // p / v
  Negate,        // -v
};

struct ChainStep {
  ChainOp Op;
  BlockOperand Operand;
};

// Operations of one point after the other over n points, in one pass: a value stays in a register from `start` through
// all steps, each of which is one IEEE operation. `out` may be one of the operands.
void ChainOverBlock(const BlockOperand& start, std::span<const ChainStep> steps, std::size_t n, double* out);

}  // namespace quorvex
