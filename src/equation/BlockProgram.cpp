#include "equation/BlockProgram.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <map>
#include <optional>
#include <tuple>

#include "core/FaultFlags.h"
#include "core/NumericFault.h"
#include "equation/Dialect.h"
#include "equation/IntrinsicFunctions.h"

namespace quorvex {
namespace {

constexpr std::size_t kLongestList = 1000;
constexpr std::size_t kDeepestIf = 100;  // as deep as the jump table of the point path goes
constexpr int kRandomCode = 9;

// Thrown where an "if" takes both branches within a block.
struct Diverged {};

}  // namespace

// Walks the instruction list with a stack of nodes in place of values. Gives up (throws Diverged) on what the point
// path has to do.
class BlockProgram::Builder {
 public:
  Builder(BlockProgram& program, const Expression& expression) : program_(program), tokens_(expression.ExprTokens) {}

  std::uint32_t Build() {
    const std::uint32_t result = Stretch(0);
    if (at_ != tokens_.size()) throw Diverged();
    return result;
  }

 private:
  struct Saved {
    std::uint32_t Node;
    std::vector<std::uint32_t> Path;
  };
  struct Computed {
    bool Exists = false;
    std::uint32_t Node = 0;
    std::vector<std::uint32_t> Path;
  };
  using Operation = std::tuple<Kind, int, std::vector<std::uint32_t>, std::uint64_t>;

  static bool IsPrefix(const std::vector<std::uint32_t>& path, const std::vector<std::uint32_t>& of) {
    return path.size() <= of.size() && std::equal(path.begin(), path.end(), of.begin());
  }

  // A value that is computed already, and has been wherever this is, is not computed again.
  std::uint32_t Add(Kind what, int code, std::initializer_list<std::uint32_t> operands, double value = 0) {
    if (what == Kind::Fork || what == Kind::Choice) return program_.Append(what, code, operands, value);
    Computed& computed = computed_[{what, code, {operands}, std::bit_cast<std::uint64_t>(value)}];
    if (!computed.Exists || !IsPrefix(computed.Path, path_))
      computed = {true, program_.Append(what, code, operands, value), path_};
    return computed.Node;
  }

  // Reads up to the function token that ends the branch (or, at 0, the list), and past it. The value left on top.
  std::uint32_t Stretch(int endCode) {
    std::vector<std::uint32_t> stack;
    const auto pop = [&] {
      if (stack.empty()) throw Diverged();
      const std::uint32_t top = stack.back();
      stack.pop_back();
      return top;
    };
    for (; at_ < tokens_.size(); ++at_) {
      const ExprToken& token = tokens_[at_];
      switch (token.Type) {
        case TokenKind::IndependentVariable:
          stack.push_back(Add(Kind::Variable, token.Code == 0 ? 0 : token.Code - 1, {}));
          break;
        case TokenKind::Literal:
          stack.push_back(Add(Kind::Constant, 0, {}, token.Value));
          break;
        case TokenKind::Coefficient:
          // A coefficient with the name of a jump word disturbs the jumps of the point path.
          if (token.Name == "endtrue" || token.Name == "endif") throw Diverged();
          stack.push_back(Add(Kind::Coefficient, token.Index - 1, {}));
          break;
        case TokenKind::SpecialWord:
          stack.push_back(Add(Kind::Statistic, token.Code, {}));
          break;
        case TokenKind::Unary:
          stack.push_back(Add(Kind::Unary, token.Code, {pop()}));
          break;
        case TokenKind::Binary: {
          const std::uint32_t b = pop(), a = pop();
          stack.push_back(Add(Kind::Binary, token.Code, {a, b}));
          break;
        }
        case TokenKind::Function:
          if (token.Code == endCode) {
            ++at_;
            return pop();
          }
          stack.push_back(token.Code == kIfCode ? If(pop()) : Call(token.Code, pop));
          if (token.Code == kIfCode) --at_;  // If has read past its end
          break;
        case TokenKind::SaveSupport:
          if (stack.empty()) throw Diverged();
          saved_[static_cast<std::size_t>(token.Code)] = Saved{stack.back(), path_};
          break;
        case TokenKind::RecallSupport: {
          // In a branch, or behind one, in which the function was not computed it has its value of another point.
          const std::optional<Saved>& saved = saved_[static_cast<std::size_t>(token.Code)];
          if (!saved || !IsPrefix(saved->Path, path_)) throw Diverged();
          stack.push_back(saved->Node);
          break;
        }
      }
    }
    return pop();
  }

  template <class Pop>
  std::uint32_t Call(int code, Pop pop) {
    if (code == kRandomCode || code == kEndTrueCode || code == kEndIfCode) throw Diverged();
    switch (IntrinsicFunctions()[static_cast<std::size_t>(code - 1)].Arguments) {
      case 1:
        return Add(Kind::Function, code, {pop()});
      case 2: {
        const std::uint32_t b = pop(), a = pop();
        return Add(Kind::Function, code, {a, b});
      }
      default: {
        const std::uint32_t c = pop(), b = pop(), a = pop();
        return Add(Kind::Function, code, {a, b, c});
      }
    }
  }

  std::uint32_t If(std::uint32_t condition) {
    if (path_.size() == kDeepestIf) throw Diverged();
    program_.forks_ = true;
    const std::uint32_t fork = Add(Kind::Fork, 0, {condition});
    const auto branch = [&](std::uint32_t which, int endCode, std::uint32_t Node::*end) {
      // A branch is named by its fork and its side.
      path_.push_back(2 * fork + which);
      const std::uint32_t result = Stretch(endCode);
      path_.pop_back();
      program_.nodes_[fork].*end = static_cast<std::uint32_t>(program_.nodes_.size());
      return result;
    };
    ++at_;
    const std::uint32_t whenTrue = branch(0, kEndTrueCode, &Node::TrueEnd);
    const std::uint32_t whenFalse = branch(1, kEndIfCode, &Node::FalseEnd);
    return Add(Kind::Choice, 0, {fork, whenTrue, whenFalse});
  }

  BlockProgram& program_;
  const std::vector<ExprToken>& tokens_;
  std::size_t at_ = 0;
  std::vector<std::uint32_t> path_;  // the branches around the present instruction
  std::array<std::optional<Saved>, 10> saved_;
  std::map<Operation, Computed> computed_;
};

std::uint32_t BlockProgram::Append(Kind what, int code, std::initializer_list<std::uint32_t> operands, double value) {
  Node node{what, false, static_cast<std::int16_t>(code), static_cast<std::uint8_t>(operands.size()), false, {}, value,
            0,    0};
  std::copy(operands.begin(), operands.end(), node.Operands);
  node.Uniform = what != Kind::Variable && std::all_of(operands.begin(), operands.end(),
                                                       [&](std::uint32_t operand) { return nodes_[operand].Uniform; });
  nodes_.push_back(node);
  return static_cast<std::uint32_t>(nodes_.size() - 1);
}

// Notes of the nodes from this one on by how many of the same they are used.
void BlockProgram::CountUses(std::size_t begin) {
  std::vector<int> uses(nodes_.size());
  for (std::size_t i = begin; i < nodes_.size(); ++i)
    for (std::size_t k = 0; k < nodes_[i].OperandCount; ++k) ++uses[nodes_[i].Operands[k]];
  for (std::size_t i = begin; i < nodes_.size(); ++i) nodes_[i].UsedOnce = uses[i] == 1;
}

BlockProgram::BlockProgram(const Expression& expression) {
  if (expression.ParseError || expression.ExprTokens.empty() || expression.ExprTokens.size() > kLongestList) return;
  try {
    result_ = Builder(*this, expression).Build();
  } catch (const Diverged&) {
    return;
  }
  supported_ = true;
  valueCount_ = static_cast<std::uint32_t>(nodes_.size());
  const std::size_t coefficients = expression.CoefficientNames.size();
  // Operands stand before what uses them, so that one pass in order finds everything that a coefficient moves.
  depends_.assign(coefficients, std::vector<bool>(nodes_.size()));
  dependents_.resize(coefficients);
  for (std::size_t c = 0; c < coefficients; ++c) {
    for (std::uint32_t i = 0; i < nodes_.size(); ++i) {
      const Node& node = nodes_[i];
      // Where a coefficient may move a model from one branch to the other, all of it is computed again.
      bool moves = forks_ || (node.What == Kind::Coefficient && static_cast<std::size_t>(node.Code) == c);
      for (std::size_t k = 0; k < node.OperandCount; ++k) moves = moves || depends_[c][node.Operands[k]];
      if (!moves) continue;
      depends_[c][i] = true;
      dependents_[c].push_back(i);
    }
  }
  // What stands still while a coefficient is varied, but is read by what moves: this is what EvaluateVariedAt has to
  // gather.
  fixed_.resize(coefficients);
  for (std::size_t c = 0; c < coefficients; ++c) {
    std::vector<bool> known = depends_[c];
    for (const std::uint32_t i : dependents_[c]) {
      const Node& node = nodes_[i];
      for (std::size_t k = 0; k < node.OperandCount; ++k) {
        if (!known[node.Operands[k]]) fixed_[c].push_back(node.Operands[k]);
        known[node.Operands[k]] = true;
      }
    }
  }
  PrepareGradient();
  CountUses(0);
  MakePlans();
  for (Slots* slots : {&base_, &moved_, &byValue_}) {
    slots->Values.resize(nodes_.size());
    slots->Blocks.resize(nodes_.size());
  }
}

// Whether no operation throws.
template <class Run>
bool BlockProgram::Completes(Run run) {
  try {
    run();
    return true;
  } catch (const NumericFault&) {
    return false;
  } catch (const Diverged&) {
    return false;
  }
}

void BlockProgram::Deliver(const BlockOperand& result, double* y) const {
  if (result.Points == nullptr)
    std::fill_n(y, n_, result.Value);
  else if (result.Points != y)
    std::copy_n(result.Points, n_, y);
}

bool BlockProgram::Evaluate(std::span<const double* const> x, std::size_t n, std::span<const double> Values,
                            const DataStatistics& statistics, double* y, Next next) {
  x_.assign(x.begin(), x.end());
  n_ = n;
  several_ = {};
  values_.assign(Values.begin(), Values.end());
  statistics_ = &statistics;
  resultPlace_ = keepsResult_[static_cast<std::size_t>(next)] ? nullptr : y;
  ClearFaultFlags();
  const bool completed = Completes([&] {
    if (forks_)
      RunRange(0, valueCount_, base_);
    else
      RunPlan(plans_[static_cast<std::size_t>(next)], base_);
  });
  if (!completed || FaultFlagsRaised()) return false;
  Deliver(base_.Values[result_], y);
  return true;
}

bool BlockProgram::EvaluateVaried(std::size_t varied, double value, double* y, std::span<const ChainStep> then) {
  const double kept = values_[varied];
  values_[varied] = value;
  for (const std::uint32_t i : fixed_[varied]) moved_.Values[i] = base_.Values[i];
  resultPlace_ = y;
  assert(then.size() <= kMostThen);
  then_ = then;
  const bool completed = Completes([&] { RunVaried(varied); });
  values_[varied] = kept;
  if (!completed) return false;
  Deliver(depends_[varied][result_] ? moved_.Values[result_] : base_.Values[result_], y);
  if (!then_.empty()) ChainOverBlock({y, 0}, then_, n_, y);
  return true;
}

bool BlockProgram::LinearIn(std::size_t coefficient) const {
  const std::vector<bool>& depends = depends_[coefficient];
  return !forks_ &&
         std::all_of(dependents_[coefficient].begin(), dependents_[coefficient].end(), [&](std::uint32_t index) {
           const Node& node = nodes_[index];
           if (node.What == Kind::Coefficient) return true;
           if (node.What == Kind::Unary) return node.Code == kNegate;
           if (node.What != Kind::Binary) return false;
           const bool first = depends[node.Operands[0]], second = depends[node.Operands[1]];
           return node.Code == kAdd || node.Code == kSubtract || (node.Code == kMultiply && first != second) ||
                  (node.Code == kDivide && !second);
         });
}

bool BlockProgram::EvaluateVariedAt(std::size_t varied, std::span<const std::uint16_t> points,
                                    std::span<const double> values, double* y) {
  const std::size_t whole = n_;
  n_ = points.size() * values.size();
  assert(VariesAt(varied) && n_ <= kBlock);
  for (const std::uint32_t i : fixed_[varied]) {
    const BlockOperand from = byValue_.Values[i] = moved_.Values[i] = base_.Values[i];
    if (from.Points == nullptr) continue;
    double* const block = Room(byValue_.Blocks[i]);
    for (std::size_t m = 0; m < points.size(); ++m) block[m] = from.Points[points[m]];
    for (std::size_t v = 1; v < values.size(); ++v) std::copy_n(block, points.size(), block + v * points.size());
    moved_.Values[i].Points = block;
  }
  resultPlace_ = y;
  then_ = {};
  several_ = values;
  const bool completed = Completes([&] { RunVaried(varied); });
  if (completed) Deliver(moved_.Values[result_], y);
  several_ = {};
  n_ = whole;
  return completed;
}

// What a node is with each value of the coefficient, at all points that have that value.
void BlockProgram::SpreadOut(std::uint32_t index) {
  double* const block = Room(moved_.Blocks[index]);
  const std::size_t points = n_ / several_.size();
  for (std::size_t v = 0; v < several_.size(); ++v)
    std::fill_n(block + v * points, points, byValue_.Values[index].At(v));
  moved_.Values[index] = {block, 0};
}

// Not inlined, so that the arithmetic stays between the two looks at the flags.
[[gnu::noinline]] void BlockProgram::RunRange(std::uint32_t begin, std::uint32_t end, Slots& slots) {
  for (std::uint32_t i = begin; i < end; ++i) {
    Compute(i, i, slots);
    if (nodes_[i].What != Kind::Fork) continue;
    const Node& fork = nodes_[i];
    if (slots.Values[i].Value != 0)
      RunRange(i + 1, fork.TrueEnd, slots);
    else
      RunRange(fork.TrueEnd, fork.FalseEnd, slots);
    // Both branches are behind; the choice that follows takes the value of the one that was run.
    i = fork.FalseEnd - 1;
  }
}

[[gnu::noinline]] void BlockProgram::RunVaried(std::size_t varied) {
  if (forks_) return RunRange(0, valueCount_, moved_);
  RunPlan(variedPlans_[varied], moved_);
}

double* BlockProgram::BlockFor(std::uint32_t index, std::uint32_t place, Slots& slots) {
  // The result is computed where the caller wants it.
  if (index == result_ && resultPlace_ != nullptr) return resultPlace_;
  return Room(slots.Blocks[place]);
}

double* BlockProgram::Room(std::unique_ptr<AlignedBlock>& block) {
  if (!block) block = std::make_unique<AlignedBlock>();
  return block->data();
}

void BlockProgram::Compute(std::uint32_t index, std::uint32_t place, Slots& slots) {
  const Node& node = nodes_[index];
  const bool severally = node.Uniform && !several_.empty();
  Slots& at = severally ? byValue_ : slots;
  BlockOperand& out = at.Values[index];
  const auto operand = [&](std::size_t which) { return at.Values[node.Operands[which]]; };
  // One value where it is the same at all points, else a block of them.
  const auto room = [&]() -> std::pair<std::size_t, double*> {
    if (node.Uniform && !severally) {
      out.Points = nullptr;
      return {1, &out.Value};
    }
    double* const values = severally ? Room(at.Blocks[index]) : BlockFor(index, place, slots);
    out.Points = values;
    return {severally ? several_.size() : n_, values};
  };
  switch (node.What) {
    case Kind::Variable:
      out = {x_[static_cast<std::size_t>(node.Code)], 0};
      break;
    case Kind::Constant:
      out = {nullptr, node.Value};
      break;
    case Kind::Coefficient:
      out = {several_.data(), values_[static_cast<std::size_t>(node.Code)]};
      break;
    case Kind::Statistic:
      out = {nullptr, StatisticValue(SpecialWordOf(node.Code), *statistics_)};
      break;
    case Kind::Unary: {
      const auto [n, values] = room();
      UnaryOverBlock(node.Code, operand(0), n, values);
      break;
    }
    case Kind::Binary: {
      const auto [n, values] = room();
      BinaryOverBlock(node.Code, operand(0), operand(1), n, values);
      break;
    }
    case Kind::Function: {
      const auto [n, values] = room();
      BlockOperand arguments[3] = {};
      for (std::size_t k = 0; k < node.OperandCount; ++k) arguments[k] = operand(k);
      FunctionOverBlock(node.Code, arguments, n, values);
      break;
    }
    case Kind::Fork: {
      const BlockOperand condition = operand(0);
      const bool whenTrue = condition.At(0) != 0;
      if (condition.Points != nullptr)
        for (std::size_t i = 1; i < n_; ++i)
          if ((condition.Points[i] != 0) != whenTrue) throw Diverged();
      out = {nullptr, whenTrue ? 1.0 : 0.0};
      break;
    }
    case Kind::Partial: {
      const auto [n, values] = room();
      ComputePartial(node, n, values);
      break;
    }
    case Kind::Choice:
      out = operand(operand(0).Value != 0 ? 1 : 2);
      break;
  }
  if (severally) SpreadOut(index);
}

}  // namespace quorvex
