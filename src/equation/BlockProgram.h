#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <list>
#include <memory>
#include <span>
#include <vector>

#include "core/AlignedBlock.h"
#include "equation/BlockOperations.h"
#include "equation/ChainOverBlock.h"
#include "equation/DataStatistics.h"
#include "equation/Expression.h"

namespace quorvex {

// A compiled model made ready for blocks of points: one instruction runs over all points of a block, then the next. Its
// values are, to the bit, those that Evaluator computes point by point.
//
// The instruction list is turned into a graph of values in which each knows the values it is computed from. So what
// depends on no point is computed once for a block, and when one coefficient moves, as it does for a derivative, only
// what depends on it is computed again. Additions, multiplications and the like of which each takes the result of the
// one before, which nobody else asks for, run as one chain, point by point.
//
// Some models stay with the point path (Supported is false): those that draw random numbers, those in which a
// supporting function may be recalled with the value it had at another point, and those of more than 1,000
// instructions.
class BlockProgram {
 public:
  explicit BlockProgram(const Expression& expression);

  bool Supported() const { return supported_; }

  // What is to come after the values of a block: nothing, EvaluateVaried or Gradient. For these the values are kept
  // that they ask for.
  enum class Next { Nothing, Differences, Gradient };

  // Values at the n <= kBlock points of the columns `x`, into `y`. False where any point faults, and where an "if"
  // takes both branches within the block: then the points are to be evaluated one by one.
  bool Evaluate(std::span<const double* const> x, std::size_t n, std::span<const double> Values,
                const DataStatistics& statistics, double* y, Next next = Next::Nothing);

  // The same points once more, with coefficient `varied` (from 0) at another value and `then` done to each result; only
  // after an Evaluate of these points for Differences that succeeded. The flags of faults (core/FaultFlags.h) are left
  // to the caller, who looks once after many of these calls: where they are raised, some point faulted.
  bool EvaluateVaried(std::size_t varied, double value, double* y, std::span<const ChainStep> then = {});

  // Whether the instructions show that the value is linear in that coefficient: sums, and products and quotients by
  // what doesn't depend on it.
  bool LinearIn(std::size_t coefficient) const;

  // Whether Gradient can tell the derivatives by all coefficients: every function that depends on one has a derivative
  // rule (equation/DerivativeRules.h).
  bool HasGradient() const { return hasGradient_; }

  // The derivatives of the value by each coefficient at the points of the last Evaluate, which was for this and
  // succeeded: dyda[c], unless it is null, becomes where they stand until the next Evaluate. By one sweep through the
  // graph, backwards: what a value contributes to the result is the sum over its users of what they contribute times
  // their derivatives by it. The flags of faults are left to the caller: where they are raised, a function has no
  // derivative at some point. Source: A. Griewank and A. Walther, Evaluating Derivatives, SIAM 2008, chapter 3.
  void Gradient(const double** dyda);

  // The same at some of the points only, given by their numbers in the block, with one value of the coefficient after
  // the other: into y[v * points.size() + m] what it is at points[m] with values[v]. All of it together is at most a
  // block. Only for a coefficient of which VariesAt is true: not in a model with an "if".
  bool EvaluateVariedAt(std::size_t varied, std::span<const std::uint16_t> points, std::span<const double> values,
                        double* y);
  bool VariesAt(std::size_t varied) const { return !forks_ && depends_[varied][result_]; }

 private:
  enum class Kind : std::uint8_t {
    Variable,
    Constant,
    Coefficient,
    Statistic,
    Unary,
    Binary,
    Function,
    Fork,
    Choice,
    Partial,  // the derivative of a node's value by one of its operands
  };
  struct Node {
    Kind What;
    bool Uniform;       // the same at all points
    std::int16_t Code;  // of variable, coefficient, special word, operator, function; of a partial: by which operand
    std::uint8_t OperandCount;
    bool UsedOnce;  // by one operand of one other node
    std::uint32_t Operands[3];
    double Value;                     // of a constant
    std::uint32_t TrueEnd, FalseEnd;  // of a fork: where its branches end; the false one begins where the true one ends
  };
  class Builder;
  class GradientBuilder;
  static constexpr std::uint32_t kNone = UINT32_MAX;

  // What a plan computes next: a node, by itself or with those whose values go through a chain to its own.
  struct Link {
    ChainOp Op;
    std::uint32_t Operand;
  };
  static constexpr std::size_t kMostThen = 4;
  struct Step {
    std::uint32_t Node = 0;
    std::uint32_t Place = 0;  // the node whose block the values go to: itself, or one that nobody asks for any more
    std::uint32_t Start = 0;  // of the chain
    std::vector<Link> Links;  // empty for a node that is computed by itself
  };
  using Plan = std::vector<Step>;

  // How the derivatives are computed, where these coefficients are wanted and the points take this way.
  struct GradientPlan {
    std::vector<bool> Key;
    std::vector<std::uint32_t> Slopes;  // of each coefficient: the node of the derivative by it
    Plan Steps;
  };

  // Where the values of each node stand.
  struct Slots {
    std::vector<BlockOperand> Values;
    std::vector<std::unique_ptr<AlignedBlock>> Blocks;  // null for a node that needs none
  };

  std::uint32_t Append(Kind what, int code, std::initializer_list<std::uint32_t> operands, double value = 0);
  void CountUses(std::size_t begin);
  void PrepareGradient();
  bool IsSquare(const Node& power) const;
  const GradientPlan& GradientFor(const double* const* dyda, double seed);
  void RunGradient(double seed, const double** dyda);
  void ComputePartial(const Node& partial, std::size_t n, double* out);
  template <class Run>
  bool Completes(Run run);
  void Deliver(const BlockOperand& result, double* y) const;
  void RunRange(std::uint32_t begin, std::uint32_t end, Slots& slots);
  void RunVaried(std::size_t varied);
  void MakePlans();
  Plan PlanFor(const std::vector<bool>& computed, const std::vector<bool>& kept) const;
  std::vector<bool> NeededByGradient() const;
  void RunPlan(const Plan& plan, Slots& slots);
  void RunChain(const Step& step, Slots& slots);
  void SpreadOut(std::uint32_t index);
  double* BlockFor(std::uint32_t index, std::uint32_t place, Slots& slots);
  void Compute(std::uint32_t index, std::uint32_t place, Slots& slots);

  std::vector<Node> nodes_;  // of the value, and behind them those of gradients
  std::uint32_t valueCount_ = 0;
  std::uint32_t result_ = 0;
  bool supported_ = false;
  bool forks_ = false;
  bool hasGradient_ = false;
  std::vector<std::uint32_t> coefficientNodes_;         // of each coefficient: its first node
  std::vector<std::uint32_t> turns_;                    // forks and powers, on whose values the gradient's nodes hang
  std::vector<std::vector<std::uint32_t>> dependents_;  // per coefficient: the nodes that depend on it, in order
  std::vector<std::vector<bool>> depends_;              // the same, per coefficient and node
  std::array<Plan, 3> plans_;                           // of all nodes, by what is to come
  std::array<bool, 3> keepsResult_{};                   // of plans_: whether what is to come asks for the result
  std::vector<Plan> variedPlans_;                       // of those that depend on a coefficient
  std::vector<std::vector<std::uint32_t>> fixed_;  // per coefficient: what does not depend on it, and is used by those

  static double* Room(std::unique_ptr<AlignedBlock>& block);  // made when it is first asked for

  // Of the block in hand.
  std::vector<const double*> x_;
  std::size_t n_ = 0;
  std::vector<double> values_;
  const DataStatistics* statistics_ = nullptr;
  Slots base_, moved_;
  std::span<const double> several_;  // the values of the varied coefficient, where it has several at once
  Slots byValue_;                    // then what is the same at all points, by value; moved_ has it point by point
  std::vector<bool> key_;            // of the gradient in hand
  std::list<GradientPlan> gradients_;
  const GradientPlan* gradient_ = nullptr;  // the last one
  double* resultPlace_ = nullptr;           // where the result goes, or null for a block of its own
  std::span<const ChainStep> then_;         // and what is done to it
};

}  // namespace quorvex
