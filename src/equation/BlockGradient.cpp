// Derivatives of a block program by its coefficients: one sweep over the graph, from the result back to them.

#include <algorithm>

#include "equation/BlockProgram.h"
#include "equation/DerivativeRules.h"
#include "equation/IntrinsicFunctions.h"
#include "functions/Elementary.h"

namespace quorvex {
namespace {

constexpr BlockOperand kOne{nullptr, 1};

bool IsOne(const BlockOperand& a) { return a.Points == nullptr && a.Value == 1; }

}  // namespace

// What one sweep knows of each node: the derivative of the result by its value, as far as its users were met.
class BlockProgram::Sweep {
 public:
  Sweep(BlockProgram& program, double* const* dyda)
      : program_(program), adjoints_(program.adjoints_), dyda_(dyda), n_(program.n_) {}

  void Run() {
    adjoints_.Known.assign(adjoints_.Known.size(), false);
    Add(program_.result_, kOne);
    for (std::uint32_t i = program_.result_ + 1; i-- > 0;)
      if (adjoints_.Known[i]) Pass(i);
  }

 private:
  using Kind = BlockProgram::Kind;

  const BlockOperand& ValueOf(std::uint32_t node) const { return program_.base_.Values[node]; }

  // Where the derivative by a node is put together: for a coefficient where the caller wants it.
  double* PlaceOf(std::uint32_t node) {
    const Node& at = program_.nodes_[node];
    if (at.What == Kind::Coefficient) return dyda_[at.Code];
    std::vector<double>& block = adjoints_.Blocks[node];
    block.resize(kBlock);
    return block.data();
  }

  // The node that stands for all those of one coefficient.
  std::uint32_t Shared(std::uint32_t node) const {
    const Node& at = program_.nodes_[node];
    return at.What == Kind::Coefficient ? program_.coefficientNodes_[static_cast<std::size_t>(at.Code)] : node;
  }

  bool IsWanted(std::uint32_t node) const { return program_.active_[node]; }

  void Add(std::uint32_t node, const BlockOperand& part) {
    node = Shared(node);
    BlockOperand& sum = adjoints_.Values[node];
    if (!adjoints_.Known[node]) {
      adjoints_.Known[node] = true;
      sum = part;
    } else if (sum.Points == nullptr && part.Points == nullptr) {
      sum.Value += part.Value;
    } else {
      double* const place = PlaceOf(node);
      BinaryOverBlock(kAdd, sum, part, n_, place);
      sum = {place, 0};
    }
  }

  void AddProduct(std::uint32_t node, const BlockOperand& a, const BlockOperand& b) {
    if (IsOne(a)) return Add(node, b);
    if (IsOne(b)) return Add(node, a);
    if (a.Points == nullptr && b.Points == nullptr) return Add(node, {nullptr, a.Value * b.Value});
    node = Shared(node);
    double* const place = PlaceOf(node);
    BlockOperand& sum = adjoints_.Values[node];
    if (adjoints_.Known[node])
      AddProductOverBlock(sum, a, b, n_, place);
    else
      BinaryOverBlock(kMultiply, a, b, n_, place);
    adjoints_.Known[node] = true;
    sum = {place, 0};
  }

  void AddNegated(std::uint32_t node, const BlockOperand& part) {
    if (part.Points == nullptr) return Add(node, {nullptr, -part.Value});
    node = Shared(node);
    double* const place = PlaceOf(node);
    BlockOperand& sum = adjoints_.Values[node];
    if (adjoints_.Known[node])
      BinaryOverBlock(kSubtract, sum, part, n_, place);
    else
      UnaryOverBlock(kNegate, part, n_, place);
    adjoints_.Known[node] = true;
    sum = {place, 0};
  }

  // Hands the derivative by the node on to what the node is computed from.
  void Pass(std::uint32_t index) {
    const Node& node = program_.nodes_[index];
    const BlockOperand from = adjoints_.Values[index];
    switch (node.What) {
      case Kind::Coefficient:
        Finish(index, from);
        break;
      case Kind::Unary:
        if (node.Code == kNegate && IsWanted(node.Operands[0])) AddNegated(node.Operands[0], from);
        break;
      case Kind::Binary:
        PassOperator(index, node, from);
        break;
      case Kind::Function:
        PassFunction(index, node, from);
        break;
      case Kind::Choice: {
        const std::uint32_t taken = node.Operands[ValueOf(node.Operands[0]).Value != 0 ? 1 : 2];
        if (IsWanted(taken)) Add(taken, from);
        break;
      }
      default:
        break;  // of variables, numbers and conditions nobody asks
    }
  }

  void Finish(std::uint32_t index, const BlockOperand& from) {
    double* const to = dyda_[program_.nodes_[index].Code];
    if (from.Points == nullptr)
      std::fill_n(to, n_, from.Value);
    else if (from.Points != to)
      std::copy_n(from.Points, n_, to);
  }

  void PassOperator(std::uint32_t index, const Node& node, const BlockOperand& from) {
    const std::uint32_t a = node.Operands[0], b = node.Operands[1];
    const bool first = IsWanted(a), second = IsWanted(b);
    switch (node.Code) {
      case kAdd:
        if (first) Add(a, from);
        if (second) Add(b, from);
        break;
      case kSubtract:
        if (first) Add(a, from);
        if (second) AddNegated(b, from);
        break;
      case kMultiply:
        if (first) AddProduct(a, from, ValueOf(b));
        if (second) AddProduct(b, from, ValueOf(a));
        break;
      case kDivide: {
        const BlockOperand part = Over(kDivide, from, ValueOf(b), 0);
        if (first) Add(a, Kept(a, part));
        if (second) AddNegated(b, Over(kMultiply, part, ValueOf(index), 1));
        break;
      }
      case kPower:
        if (first)
          AddPartial(index, a, from,
                     [&](double* out) { PowerByBase(ValueOf(a), ValueOf(b), ValueOf(index), Count(index), out); });
        if (second)
          AddPartial(index, b, from,
                     [&](double* out) { PowerByExponent(ValueOf(a), ValueOf(index), Count(index), out); });
        break;
      default:
        break;  // the others go in steps
    }
  }

  void PassFunction(std::uint32_t index, const Node& node, const BlockOperand& from) {
    BlockOperand arguments[3] = {};
    for (std::size_t k = 0; k < node.OperandCount; ++k) arguments[k] = ValueOf(node.Operands[k]);
    for (std::size_t k = 0; k < node.OperandCount; ++k) {
      if (!IsWanted(node.Operands[k])) continue;
      if (node.Code == kExpCode) {
        AddProduct(node.Operands[k], from, ValueOf(index));
        continue;
      }
      AddPartial(index, node.Operands[k], from,
                 [&](double* out) { PartialOverBlock(node.Code, k, arguments, ValueOf(index), Count(index), out); });
    }
  }

  std::size_t Count(std::uint32_t index) const { return program_.nodes_[index].Uniform ? 1 : n_; }

  // Adds to an operand's derivative that of the node at `index` times its own derivative by the operand, which `fill`
  // computes: one number where the node is the same at all points, else a block of them.
  template <class Fill>
  void AddPartial(std::uint32_t index, std::uint32_t operand, const BlockOperand& from, Fill fill) {
    double* const place = adjoints_.Scratch[0].data();
    fill(place);
    const BlockOperand partial =
        program_.nodes_[index].Uniform ? BlockOperand{nullptr, place[0]} : BlockOperand{place, 0};
    if (IsOne(from))
      Add(operand, Kept(operand, partial));
    else
      AddProduct(operand, from, partial);
  }

  BlockOperand Over(int code, const BlockOperand& a, const BlockOperand& b, std::size_t scratch) {
    double* const place = adjoints_.Scratch[scratch].data();
    const bool uniform = a.Points == nullptr && b.Points == nullptr;
    BinaryOverBlock(code, a, b, uniform ? 1 : n_, place);
    return uniform ? BlockOperand{nullptr, place[0]} : BlockOperand{place, 0};
  }

  // A derivative in scratch, where the next operation will write, taken to the node's own place; but what goes into a
  // sum may stay.
  BlockOperand Kept(std::uint32_t node, const BlockOperand& part) {
    node = Shared(node);
    if (part.Points == nullptr || adjoints_.Known[node]) return part;
    double* const place = PlaceOf(node);
    std::copy_n(part.Points, n_, place);
    return {place, 0};
  }

  // d(a^b)/da is b*a^b/a, but where the power has lost its digits or a is 0.
  static void PowerByBase(const BlockOperand& a, const BlockOperand& b, const BlockOperand& power, std::size_t n,
                          double* out) {
    constexpr double kFewDigits = 1e-290;
    for (std::size_t i = 0; i < n; ++i) {
      const double base = a.At(i), exponent = b.At(i), value = power.At(i);
      const bool divides = std::abs(value) > kFewDigits && base != 0;
      out[i] = exponent == 0   ? 0
               : exponent == 1 ? 1
               : exponent == 2 ? 2 * base
               : divides       ? exponent * (value / base)
                               : exponent * Power(base, exponent - 1);
    }
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

  BlockProgram& program_;
  Adjoints& adjoints_;
  double* const* const dyda_;
  const std::size_t n_;
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
  std::vector<bool> wanted(dependents_.size());
  for (std::size_t c = 0; c < wanted.size(); ++c) wanted[c] = dyda[c] != nullptr;
  if (active_.size() == nodes_.size() && wanted == wanted_) return;
  wanted_ = wanted;
  active_.assign(nodes_.size(), false);
  for (std::uint32_t i = 0; i < nodes_.size(); ++i) {
    const Node& node = nodes_[i];
    active_[i] = node.What == Kind::Coefficient && wanted[static_cast<std::size_t>(node.Code)];
    // A condition goes in steps.
    if (node.What == Kind::Fork) continue;
    for (std::size_t k = 0; k < node.OperandCount; ++k) active_[i] = active_[i] || active_[node.Operands[k]];
  }
  adjoints_.Values.resize(nodes_.size());
  adjoints_.Blocks.resize(nodes_.size());
  adjoints_.Known.resize(nodes_.size());
}

void BlockProgram::Gradient(double* const* dyda) {
  TakeWanted(dyda);
  // What no path leads to from the result, as in the branch that was not taken, has no part in it.
  for (std::size_t c = 0; c < wanted_.size(); ++c)
    if (wanted_[c]) std::fill_n(dyda[c], n_, 0.0);
  if (active_[result_]) Sweep(*this, dyda).Run();
}

}  // namespace quorvex
