#pragma once

#include <algorithm>
#include <array>
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

// Values over a block that are not computed yet: a start, and what is to be done to it.
class PendingChain {
 public:
  static constexpr std::size_t kMost = 8;  // steps

  PendingChain(BlockOperand start = {nullptr, 0}) : start_(start) {}
  // Without the steps that it has no use of.
  PendingChain(const PendingChain& other) { *this = other; }
  PendingChain& operator=(const PendingChain& other) {
    start_ = other.start_;
    count_ = other.count_;
    std::copy_n(other.steps_.begin(), count_, steps_.begin());
    return *this;
  }

  bool IsOperand() const { return count_ == 0; }
  std::size_t StepCount() const { return count_; }
  // Without steps: what it starts with.
  const BlockOperand& Start() const { return start_; }

  // One more step. Numbers that are the same for all points are computed at once, and products with 1 are none.
  void Do(ChainOp op, BlockOperand operand = {nullptr, 0});
  void Multiply(BlockOperand operand) { Do(ChainOp::Multiply, operand); }

  void ComputeTo(std::size_t n, double* out) const { ChainOverBlock(start_, std::span(steps_).first(count_), n, out); }

 private:
  BlockOperand start_;
  std::size_t count_ = 0;
  std::array<ChainStep, kMost> steps_;
};

}  // namespace quorvex
