// Derivatives of a block program by its coefficients: one sweep over the graph, from the result back to them.

#include <algorithm>
#include <cfenv>

#include "core/FaultFlags.h"
#include "equation/BlockProgram.h"
#include "equation/DerivativeRules.h"
#include "equation/IntrinsicFunctions.h"
#include "functions/Elementary.h"

namespace quorvex {
namespace {

// So many steps are rather computed twice than put down once more.
constexpr std::size_t kFewSteps = 1;

// The derivative of the result by itself, times so much, where products on the way fall below the doubles: a power of
// two, so that no other bit changes.
constexpr double kRaised = 0x1p600;

}  // namespace

// What one sweep knows of each node: the derivative of the result by its value, as far as its users were met. It stays
// a chain of what is to be computed until the end, or until several such chains meet.
class BlockProgram::Sweep {
 public:
  Sweep(BlockProgram& program, double* const* dyda)
      : program_(program), adjoints_(program.adjoints_), dyda_(dyda), n_(program.n_) {}

  void Run() {
    ClearFlags(FE_UNDERFLOW);
    RunFrom(1);
    // A later factor may bring back what is too small.
    if (HasUnderflown()) RunFrom(kRaised);
  }

 private:
  using Kind = BlockProgram::Kind;

  static bool HasUnderflown() { return FlagsRaised(FE_UNDERFLOW); }

  void RunFrom(double unit) {
    unit_ = unit;
    adjoints_.Known.assign(adjoints_.Known.size(), false);
    if (IsWanted(program_.result_)) Add(program_.result_, BlockOperand{nullptr, unit});
    for (std::uint32_t i = program_.result_ + 1; i-- > 0;)
      if (adjoints_.Known[i]) Pass(i);
    // What no path leads to from the result, as in the branch that was not taken, has no part in it.
    for (std::size_t c = 0; c < program_.wanted_.size(); ++c)
      if (program_.wanted_[c] && !adjoints_.Known[program_.coefficientNodes_[c]]) std::fill_n(dyda_[c], n_, 0.0);
  }

  const BlockOperand& ValueOf(std::uint32_t node) const { return program_.base_.Values[node]; }

  // Where the derivative by a node is put down: for a coefficient where the caller wants it.
  double* PlaceOf(std::uint32_t node) {
    const Node& at = program_.nodes_[node];
    if (at.What == Kind::Coefficient) return dyda_[at.Code];
    return Room(adjoints_.Blocks[node]);
  }

  // The node that stands for all those of one coefficient.
  std::uint32_t Shared(std::uint32_t node) const {
    const Node& at = program_.nodes_[node];
    return at.What == Kind::Coefficient ? program_.coefficientNodes_[static_cast<std::size_t>(at.Code)] : node;
  }

  bool IsWanted(std::uint32_t node) const { return program_.active_[node]; }

  void PutDown(std::uint32_t node, PendingChain& chain) {
    double* const place = PlaceOf(node);
    chain.ComputeTo(n_, place);
    chain = BlockOperand{place, 0};
  }

  void Add(std::uint32_t node, PendingChain part) {
    node = Shared(node);
    PendingChain& sum = adjoints_.Values[node];
    if (!adjoints_.Known[node]) {
      adjoints_.Known[node] = true;
      sum = part;
      return;
    }
    if (!sum.IsOperand() && part.IsOperand()) std::swap(sum, part);
    if (!sum.IsOperand()) PutDown(node, sum);
    part.Do(ChainOp::Add, sum.Start());
    if (!part.IsOperand()) PutDown(node, part);
    sum = part;
  }

  // Hands the derivative by the node on to what the node is computed from.
  void Pass(std::uint32_t index) {
    const Node& node = program_.nodes_[index];
    PendingChain& from = adjoints_.Values[index];
    if (node.What == Kind::Coefficient) return Finish(index, from);
    std::size_t heirs = 0;
    for (std::size_t k = 0; k < node.OperandCount; ++k) heirs += IsWanted(node.Operands[k]);
    if ((heirs > 1 && from.StepCount() > kFewSteps) || from.StepCount() + kMostSteps > PendingChain::kMost)
      PutDown(index, from);
    switch (node.What) {
      case Kind::Unary:
        if (node.Code == kNegate) Hand(node.Operands[0], from, {{ChainOp::Negate, {}}});
        break;
      case Kind::Binary:
        PassOperator(index, node, from);
        break;
      case Kind::Function:
        PassFunction(index, node, from);
        break;
      case Kind::Choice:
        Hand(node.Operands[ValueOf(node.Operands[0]).Value != 0 ? 1 : 2], from, {});
        break;
      default:
        break;  // of variables, numbers and conditions nobody asks
    }
  }

  void Finish(std::uint32_t index, const PendingChain& from) {
    double* const to = dyda_[program_.nodes_[index].Code];
    if (from.IsOperand() && from.Start().Points == nullptr)
      std::fill_n(to, n_, from.Start().Value);
    else if (from.IsOperand() && from.Start().Points != to)
      std::copy_n(from.Start().Points, n_, to);
    else if (!from.IsOperand())
      from.ComputeTo(n_, to);
    if (unit_ != 1) BinaryOverBlock(kMultiply, {to, 0}, {nullptr, 1 / unit_}, n_, to);
  }

  // Adds to the derivative by an operand what the steps make of that by the node, if anybody wants it.
  void Hand(std::uint32_t operand, PendingChain from, std::initializer_list<ChainStep> steps) {
    if (!IsWanted(operand)) return;
    for (const ChainStep& step : steps) from.Do(step.Op, step.Operand);
    Add(operand, from);
  }

  void PassOperator(std::uint32_t index, const Node& node, const PendingChain& from) {
    const std::uint32_t a = node.Operands[0], b = node.Operands[1];
    const BlockOperand& first = ValueOf(a);
    const BlockOperand& second = ValueOf(b);
    switch (node.Code) {
      case kAdd:
        Hand(a, from, {});
        Hand(b, from, {});
        break;
      case kSubtract:
        Hand(a, from, {});
        Hand(b, from, {{ChainOp::Negate, {}}});
        break;
      case kMultiply:
        Hand(a, from, {{ChainOp::Multiply, second}});
        Hand(b, from, {{ChainOp::Multiply, first}});
        break;
      case kDivide:
        Hand(a, from, {{ChainOp::Divide, second}});
        Hand(b, from, {{ChainOp::Divide, second}, {ChainOp::Multiply, ValueOf(index)}, {ChainOp::Negate, {}}});
        break;
      case kPower:
        if (second.Points == nullptr && second.Value == 2)
          Hand(a, from, {{ChainOp::Multiply, first}, {ChainOp::Multiply, second}});
        else if (IsWanted(a))
          HandPartial(index, 0, from,
                      [&](std::size_t n, double* out) { PowerByBase(first, second, ValueOf(index), n, out); });
        if (IsWanted(b))
          HandPartial(index, 1, from,
                      [&](std::size_t n, double* out) { PowerByExponent(first, ValueOf(index), n, out); });
        break;
      default:
        break;  // the others go in steps
    }
  }

  void PassFunction(std::uint32_t index, const Node& node, const PendingChain& from) {
    if (node.Code == kExpCode) return Hand(node.Operands[0], from, {{ChainOp::Multiply, ValueOf(index)}});
    BlockOperand arguments[3] = {};
    for (std::size_t k = 0; k < node.OperandCount; ++k) arguments[k] = ValueOf(node.Operands[k]);
    for (std::size_t k = 0; k < node.OperandCount; ++k)
      if (IsWanted(node.Operands[k]))
        HandPartial(index, k, from, [&](std::size_t n, double* out) {
          PartialOverBlock(node.Code, k, arguments, ValueOf(index), n, out);
        });
  }

  // The derivative by operand `which` of the node is that by the node times what `fill` computes: one number where the
  // node is the same at all points, else a block of them.
  template <class Fill>
  void HandPartial(std::uint32_t index, std::size_t which, const PendingChain& from, Fill fill) {
    const Node& node = program_.nodes_[index];
    double* const partial = Room(adjoints_.Partials[index][which]);
    fill(node.Uniform ? 1 : n_, partial);
    const BlockOperand factor = node.Uniform ? BlockOperand{nullptr, partial[0]} : BlockOperand{partial, 0};
    Hand(node.Operands[which], from, {{ChainOp::Multiply, factor}});
  }

  // d(a^b)/da is b*a^b/a, but where the power has lost its digits or a is 0.
  static void PowerByBase(const BlockOperand& a, const BlockOperand& b, const BlockOperand& power, std::size_t n,
                          double* out) {
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
  static void PowerByExponent(const BlockOperand& a, const BlockOperand& power, std::size_t n, double* out) {
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

  static constexpr std::size_t kMostSteps = 4;  // that one node adds to a chain, with those of a sum

  BlockProgram& program_;
  Adjoints& adjoints_;
  double* const* const dyda_;
  const std::size_t n_;
  double unit_ = 1;
};

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
    for (std::size_t k = 0; k < node.OperandCount; ++k) {
      if (!depends[node.Operands[k]]) continue;
      depends[i] = true;
      if (node.What == Kind::Function && !HasPartial(node.Code, k)) hasGradient_ = false;
    }
  }
}

// Notes which nodes depend on a coefficient whose derivative is wanted.
void BlockProgram::TakeWanted(double* const* dyda) {
  bool changed = active_.empty();
  wanted_.resize(dependents_.size());
  for (std::size_t c = 0; c < wanted_.size(); ++c) {
    const bool isWanted = dyda[c] != nullptr;
    changed = changed || wanted_[c] != isWanted;
    wanted_[c] = isWanted;
  }
  if (!changed) return;
  active_.assign(nodes_.size(), false);
  for (std::uint32_t i = 0; i < nodes_.size(); ++i) {
    const Node& node = nodes_[i];
    active_[i] = node.What == Kind::Coefficient && wanted_[static_cast<std::size_t>(node.Code)];
    // A condition goes in steps.
    if (node.What == Kind::Fork) continue;
    for (std::size_t k = 0; k < node.OperandCount; ++k) active_[i] = active_[i] || active_[node.Operands[k]];
  }
  adjoints_.Values.resize(nodes_.size());
  adjoints_.Blocks.resize(nodes_.size());
  adjoints_.Known.resize(nodes_.size());
  adjoints_.Partials.resize(nodes_.size());
}

void BlockProgram::Gradient(double* const* dyda) {
  TakeWanted(dyda);
  Sweep(*this, dyda).Run();
}

}  // namespace quorvex
