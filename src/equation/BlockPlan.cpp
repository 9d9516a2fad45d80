// In what order the nodes of a block program are computed, and which of them together.

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "equation/BlockProgram.h"

namespace quorvex {
namespace {

constexpr std::size_t kLongestChain = 16;

// The step that an operation is for the operand `which` of it, or none.
std::optional<ChainOp> ChainOpOf(int code, std::size_t which) {
  switch (code) {
    case kAdd:
      return ChainOp::Add;
    case kSubtract:
      return which == 0 ? ChainOp::Subtract : ChainOp::SubtractFrom;
    case kMultiply:
      return ChainOp::Multiply;
    case kDivide:
      return which == 0 ? ChainOp::Divide : ChainOp::DivideInto;
    default:
      return std::nullopt;
  }
}

}  // namespace

// The plan that computes these nodes and leaves the values of those that are kept. With every operation goes the chain
// of one operand: the longer one, if there are two.
BlockProgram::Plan BlockProgram::PlanFor(const std::vector<bool>& computed, const std::vector<bool>& kept) const {
  const auto isLink = [&](std::uint32_t i) {
    const Node& node = nodes_[i];
    return !node.Uniform && ((node.What == Kind::Binary && ChainOpOf(node.Code, 0)) ||
                             (node.What == Kind::Unary && node.Code == kNegate));
  };
  // Whether nobody but its one user asks for the value.
  const auto isPassing = [&](std::uint32_t i) {
    return computed[i] && !kept[i] && nodes_[i].UsedOnce && !nodes_[i].Uniform && nodes_[i].OperandCount > 0;
  };
  std::vector<Step> steps(nodes_.size());  // that end at a node
  std::vector<bool> absorbed(nodes_.size());
  for (std::uint32_t i = 0; i < nodes_.size(); ++i) {
    if (!computed[i]) continue;
    const Node& node = nodes_[i];
    Step& step = steps[i];
    std::vector<std::uint32_t> read(node.Operands, node.Operands + node.OperandCount);
    if (isLink(i)) {
      std::size_t carried = 0, longest = 0;
      for (std::size_t k = 0; k < node.OperandCount; ++k) {
        const std::size_t length = steps[node.Operands[k]].Links.size();
        if (!isPassing(node.Operands[k]) || length <= longest || length == kLongestChain) continue;
        longest = length;
        carried = k;
      }
      if (longest > 0) {
        absorbed[node.Operands[carried]] = true;
        step = std::move(steps[node.Operands[carried]]);
      } else {
        // With the values of points, since a number would be spread over registers first.
        if (nodes_[node.Operands[0]].Uniform) carried = 1;
        step.Start = node.Operands[carried];
      }
      if (node.What == Kind::Unary)
        step.Links.push_back({ChainOp::Negate, node.Operands[0]});
      else
        step.Links.push_back({*ChainOpOf(node.Code, carried), node.Operands[1 - carried]});
      read = {step.Start};
      for (const Link& link : step.Links)
        if (link.Op != ChainOp::Negate) read.push_back(link.Operand);
    }
    step.Node = step.Place = i;
    // Written over where it stands, so that what is at work stays in the nearest cache; but a function would have to
    // do so by way of a block of its own.
    const bool isFunction = node.What == Kind::Function || (node.What == Kind::Binary && node.Code == kPower);
    if (!isFunction)
      for (const std::uint32_t from : read)
        if (isPassing(from)) step.Place = steps[from].Place;
  }
  Plan plan;
  for (std::uint32_t i = 0; i < nodes_.size(); ++i)
    if (computed[i] && !absorbed[i]) plan.push_back(std::move(steps[i]));
  return plan;
}

// The nodes that the sweep for the gradient looks at.
std::vector<bool> BlockProgram::NeededByGradient() const {
  std::vector<bool> needed(nodes_.size());
  const auto isActive = [&](std::uint32_t i) {
    return std::ranges::any_of(depends_, [&](const std::vector<bool>& depends) { return depends[i]; });
  };
  for (std::uint32_t i = 0; i < nodes_.size(); ++i) {
    const Node& node = nodes_[i];
    if (!isActive(i)) continue;
    const bool isProduct = node.What == Kind::Binary && node.Code == kMultiply;
    const bool isOther =
        node.What == Kind::Function || (node.What == Kind::Binary && (node.Code == kDivide || node.Code == kPower));
    if (isProduct)
      for (std::size_t k = 0; k < 2; ++k)
        needed[node.Operands[1 - k]] = needed[node.Operands[1 - k]] || isActive(node.Operands[k]);
    if (!isOther) continue;
    needed[i] = true;
    // The exponential is its own derivative.
    if (node.What == Kind::Function && node.Code == kExpCode) continue;
    for (std::size_t k = 0; k < node.OperandCount; ++k) needed[node.Operands[k]] = true;
  }
  return needed;
}

void BlockProgram::MakePlans() {
  keepsResult_.fill(true);
  if (forks_) return;
  const std::vector<bool> all(nodes_.size(), true), none(nodes_.size(), false);
  std::vector<bool> standing = none;  // while some coefficient moves
  for (const std::vector<std::uint32_t>& fixed : fixed_)
    for (const std::uint32_t i : fixed) standing[i] = true;
  // A coefficient that the value does not depend on leaves it as it is.
  for (const std::vector<bool>& depends : depends_) standing[result_] = standing[result_] || !depends[result_];
  const std::vector<bool> needed = NeededByGradient();
  plans_ = {PlanFor(all, none), PlanFor(all, standing), PlanFor(all, needed)};
  keepsResult_ = {false, standing[result_], needed[result_]};
  for (const std::vector<bool>& depends : depends_) variedPlans_.push_back(PlanFor(depends, none));
}

void BlockProgram::RunPlan(const Plan& plan, Slots& slots) {
  for (const Step& step : plan) {
    if (step.Links.empty())
      Compute(step.Node, step.Place, slots);
    else
      RunChain(step, slots);
  }
}

void BlockProgram::RunChain(const Step& step, Slots& slots) {
  std::array<ChainStep, kLongestChain + kMostThen> links;
  std::size_t count = 0;
  for (const Link& link : step.Links) links[count++] = {link.Op, slots.Values[link.Operand]};
  // What is to be done to the result goes along with it.
  if (step.Node == result_ && &slots == &moved_)
    for (const ChainStep& then : std::exchange(then_, {})) links[count++] = then;
  const BlockOperand start = slots.Values[step.Start];
  double* const block = BlockFor(step.Node, step.Place, slots);
  ChainOverBlock(start, std::span(links).first(count), n_, block);
  slots.Values[step.Node] = {block, 0};
}

}  // namespace quorvex
