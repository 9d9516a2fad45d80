// Derivatives of a block program by its coefficients: one sweep over the graph, from the result back to them, which
// adds to the graph what is to be computed.

#include <algorithm>
#include <cfenv>

#include "core/FaultFlags.h"
#include "equation/BlockProgram.h"
#include "equation/DerivativeRules.h"
#include "equation/IntrinsicFunctions.h"
#include "functions/Elementary.h"

namespace quorvex {
namespace {

// The derivative of the result by itself, times so much, where products on the way fall below the doubles: a power of
// two, so that no other bit changes.
constexpr double kRaised = 0x1p600;

// Of one program, each for other coefficients that are wanted or another way through its branches.
constexpr std::size_t kMostGradients = 16;

// d(a^b)/da is b*a^b/a, but where the power has lost its digits or a is 0.
void PowerByBase(const BlockOperand& a, const BlockOperand& b, const BlockOperand& power, std::size_t n, double* out) {
  constexpr double kFewDigits = 1e-290;
  bool all = true;
  for (std::size_t i = 0; i < n; ++i) {
    const bool divides = std::abs(power.At(i)) > kFewDigits && a.At(i) != 0 && b.At(i) != 0;
    all = all && divides;
    out[i] = b.At(i) * (power.At(i) / (divides ? a.At(i) : 1));
  }
  if (all) return;
  for (std::size_t i = 0; i < n; ++i)
    if (!(std::abs(power.At(i)) > kFewDigits) || a.At(i) == 0 || b.At(i) == 0)
      out[i] = b.At(i) == 0 ? 0 : b.At(i) * Power(a.At(i), b.At(i) - 1);
}

// d(a^b)/db is ln(a)*a^b, and 0 where a is.
void PowerByExponent(const BlockOperand& a, const BlockOperand& power, std::size_t n, double* out) {
  if (a.Points == nullptr) {
    const double logarithm = a.Value == 0 ? 0 : Ln(a.Value);
    for (std::size_t i = 0; i < n; ++i) out[i] = power.At(i) * logarithm;
    // 0^0 is 1 and has no derivative.
    if (a.Value == 0)
      for (std::size_t i = 0; i < n; ++i)
        if (power.At(i) != 0) out[i] = Ln(0);
    return;
  }
  for (std::size_t i = 0; i < n; ++i) out[i] = a.Points[i] == 0 && power.At(i) == 0 ? 1 : a.Points[i];
  LnBlock(out, out, n);
  for (std::size_t i = 0; i < n; ++i) out[i] *= power.At(i);
}

}  // namespace

// Walks the graph from the result to the coefficients and adds, for each node on the way, the nodes that compute the
// derivative of the result by it.
class BlockProgram::GradientBuilder {
 public:
  // `seed` is the derivative of the result by itself.
  GradientBuilder(BlockProgram& program, const std::vector<bool>& wanted, double seed)
      : program_(program), seed_(seed), active_(program.valueCount_), slopes_(program.valueCount_, kNone) {
    for (std::uint32_t i = 0; i < program.valueCount_; ++i) {
      const Node& node = program.nodes_[i];
      active_[i] = node.What == Kind::Coefficient && wanted[static_cast<std::size_t>(node.Code)];
      // A condition goes in steps.
      if (node.What == Kind::Fork) continue;
      for (std::size_t k = 0; k < node.OperandCount; ++k) active_[i] = active_[i] || active_[node.Operands[k]];
    }
  }

  // The node of the derivative by each coefficient: 0 where that has no part in the result, as in a branch that was not
  // taken.
  std::vector<std::uint32_t> Build() {
    Hand(program_.result_, Number(seed_));
    for (std::uint32_t i = program_.result_ + 1; i-- > 0;)
      if (slopes_[i] != kNone) Pass(i, slopes_[i]);
    std::vector<std::uint32_t> slopes;
    for (const std::uint32_t node : program_.coefficientNodes_) {
      const std::uint32_t slope = slopes_[node];
      slopes.push_back(slope == kNone ? Number(0) : seed_ == 1 ? slope : Times(slope, Number(1 / seed_)));
    }
    return slopes;
  }

 private:
  std::uint32_t Number(double value) { return program_.Append(Kind::Constant, 0, {}, value); }
  bool IsOne(std::uint32_t node) const {
    return program_.nodes_[node].What == Kind::Constant && program_.nodes_[node].Value == 1;
  }
  // A number comes second, where it need not be spread over a block.
  std::uint32_t Times(std::uint32_t a, std::uint32_t b) {
    if (IsOne(a)) return b;
    if (IsOne(b)) return a;
    if (program_.nodes_[a].Uniform) std::swap(a, b);
    return program_.Append(Kind::Binary, kMultiply, {a, b});
  }
  std::uint32_t Negative(std::uint32_t a) { return program_.Append(Kind::Unary, kNegate, {a}); }

  // The derivative of the node's value by operand `which`, in a node of its own.
  std::uint32_t Partial(std::uint32_t index, int which) { return program_.Append(Kind::Partial, which, {index}); }

  bool IsWanted(std::uint32_t node) const { return active_[node]; }

  // Adds a part to the derivative by a node, if anybody wants it. One node stands for all those of a coefficient.
  void Hand(std::uint32_t node, std::uint32_t part) {
    if (!IsWanted(node)) return;
    const Node& at = program_.nodes_[node];
    if (at.What == Kind::Coefficient) node = program_.coefficientNodes_[static_cast<std::size_t>(at.Code)];
    std::uint32_t& slope = slopes_[node];
    slope = slope == kNone ? part : program_.Append(Kind::Binary, kAdd, {part, slope});
  }

  // Hands the derivative by the node on to what the node is computed from.
  void Pass(std::uint32_t index, std::uint32_t from) {
    const Node node = program_.nodes_[index];
    switch (node.What) {
      case Kind::Unary:
        if (node.Code == kNegate) Hand(node.Operands[0], Negative(from));
        break;
      case Kind::Binary:
        PassOperator(index, node, from);
        break;
      case Kind::Function:
        for (std::size_t k = 0; k < node.OperandCount; ++k)
          if (IsWanted(node.Operands[k]))  // the exponential is its own derivative
            Hand(node.Operands[k], Times(from, node.Code == kExpCode ? index : Partial(index, static_cast<int>(k))));
        break;
      case Kind::Choice:
        Hand(node.Operands[program_.base_.Values[node.Operands[0]].Value != 0 ? 1 : 2], from);
        break;
      default:
        break;  // of variables, numbers and conditions nobody asks, and a coefficient is the end
    }
  }

  void PassOperator(std::uint32_t index, const Node& node, std::uint32_t from) {
    const std::uint32_t a = node.Operands[0], b = node.Operands[1];
    switch (node.Code) {
      case kAdd:
        Hand(a, from);
        Hand(b, from);
        break;
      case kSubtract:
        Hand(a, from);
        if (IsWanted(b)) Hand(b, Negative(from));
        break;
      case kMultiply:
        if (IsWanted(a)) Hand(a, Times(from, b));
        if (IsWanted(b)) Hand(b, Times(from, a));
        break;
      case kDivide: {
        const std::uint32_t quotient = program_.Append(Kind::Binary, kDivide, {from, b});
        Hand(a, quotient);
        if (IsWanted(b)) Hand(b, Negative(Times(quotient, index)));
        break;
      }
      case kPower:
        if (IsWanted(a)) Hand(a, program_.IsSquare(node) ? Times(Times(from, a), b) : Times(from, Partial(index, 0)));
        if (IsWanted(b)) Hand(b, Times(from, Partial(index, 1)));
        break;
      default:
        break;  // the others go in steps
    }
  }

  BlockProgram& program_;
  const double seed_;
  std::vector<bool> active_;           // the nodes that depend on a coefficient that is wanted
  std::vector<std::uint32_t> slopes_;  // the derivative of the result by each node, as far as its users were met
};

bool BlockProgram::IsSquare(const Node& power) const {
  const BlockOperand& exponent = base_.Values[power.Operands[1]];
  return exponent.Points == nullptr && exponent.Value == 2;
}

void BlockProgram::PrepareGradient() {
  const std::size_t coefficients = dependents_.size();
  coefficientNodes_.assign(coefficients, 0);
  for (std::uint32_t i = static_cast<std::uint32_t>(nodes_.size()); i-- > 0;)
    if (nodes_[i].What == Kind::Coefficient) coefficientNodes_[static_cast<std::size_t>(nodes_[i].Code)] = i;
  std::vector<bool> depends(nodes_.size());
  hasGradient_ = true;
  for (std::uint32_t i = 0; i < nodes_.size(); ++i) {
    const Node& node = nodes_[i];
    depends[i] = node.What == Kind::Coefficient;
    if (node.What == Kind::Fork || (node.What == Kind::Binary && node.Code == kPower)) turns_.push_back(i);
    for (std::size_t k = 0; k < node.OperandCount; ++k) {
      if (!depends[node.Operands[k]]) continue;
      depends[i] = true;
      if (node.What == Kind::Function && !HasPartial(node.Code, k)) hasGradient_ = false;
    }
  }
}

// The gradient for these coefficients by the way that the last Evaluate took.
const BlockProgram::GradientPlan& BlockProgram::GradientFor(const double* const* dyda, double seed) {
  key_.clear();
  for (std::size_t c = 0; c < dependents_.size(); ++c) key_.push_back(dyda[c] != nullptr);
  for (const std::uint32_t i : turns_)
    key_.push_back(nodes_[i].What == Kind::Fork ? base_.Values[i].Value != 0 : IsSquare(nodes_[i]));
  key_.push_back(seed == 1);
  if (gradient_ != nullptr && gradient_->Key == key_) return *gradient_;
  for (GradientPlan& known : gradients_)
    if (known.Key == key_) return *(gradient_ = &known);
  if (gradients_.size() == kMostGradients) {
    gradients_.clear();
    gradient_ = nullptr;
    nodes_.resize(valueCount_);
  }
  const std::size_t begin = nodes_.size();
  std::vector<std::uint32_t> slopes = GradientBuilder(*this, key_, seed).Build();
  CountUses(begin);
  std::vector<bool> computed(nodes_.size()), kept(nodes_.size());
  std::fill(computed.begin() + static_cast<std::ptrdiff_t>(begin), computed.end(), true);
  for (const std::uint32_t slope : slopes) kept[slope] = true;
  base_.Values.resize(nodes_.size());
  base_.Blocks.resize(nodes_.size());
  gradients_.push_back({key_, std::move(slopes), PlanFor(computed, kept)});
  return *(gradient_ = &gradients_.back());
}

void BlockProgram::RunGradient(double seed, const double** dyda) {
  const GradientPlan& gradient = GradientFor(dyda, seed);
  RunPlan(gradient.Steps, base_);
  for (std::size_t c = 0; c < gradient.Slopes.size(); ++c) {
    if (dyda[c] == nullptr) continue;
    const std::uint32_t slope = gradient.Slopes[c];
    const BlockOperand& of = base_.Values[slope];
    if (of.Points == nullptr) std::fill_n(Room(base_.Blocks[slope]), n_, of.Value);
    dyda[c] = of.Points != nullptr ? of.Points : base_.Blocks[slope]->data();
  }
}

void BlockProgram::ComputePartial(const Node& partial, std::size_t n, double* out) {
  const std::uint32_t index = partial.Operands[0];
  const Node& node = nodes_[index];
  BlockOperand operands[3] = {};
  for (std::size_t k = 0; k < node.OperandCount; ++k) operands[k] = base_.Values[node.Operands[k]];
  const BlockOperand& value = base_.Values[index];
  if (node.What == Kind::Function)
    PartialOverBlock(node.Code, static_cast<std::size_t>(partial.Code), operands, value, n, out);
  else if (partial.Code == 0)
    PowerByBase(operands[0], operands[1], value, n, out);
  else
    PowerByExponent(operands[0], value, n, out);
}

void BlockProgram::Gradient(const double** dyda) {
  ClearFlags(FE_UNDERFLOW);
  RunGradient(1, dyda);
  // A later factor may bring back what is too small.
  if (RaisedFlags(FE_UNDERFLOW) != 0) RunGradient(kRaised, dyda);
}

}  // namespace quorvex
