#include "equation/Evaluator.h"

#include <cmath>
#include <limits>

#include "core/FaultFlags.h"
#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "equation/Dialect.h"
#include "equation/Elementary.h"

namespace quorvex {
namespace {

double Truth(bool holds) { return holds ? -1.0 : 0.0; }

// Quotient and remainder of the rounded operands, truncated toward zero.
struct Division {
  Division(double a, double b) : dividend(RoundToInt32(a)), divisor(RoundToInt32(b)) {
    if (divisor == 0 || (divisor == -1 && dividend == std::numeric_limits<std::int32_t>::min())) throw NumericFault();
  }
  std::int32_t dividend, divisor;
};

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

double StatisticValue(SpecialWord word, const DataStatistics& data) {
  switch (word.What) {
    case Statistic::YMin:
      return data.InputYMin;
    case Statistic::YMax:
      return data.InputYMax;
    case Statistic::YMean:
      return data.YMean;
    case Statistic::YStd:
      return data.YStd;
    case Statistic::YRange:
      return std::abs(data.InputYMax - data.InputYMin);
    default:
      break;
  }
  const auto index = static_cast<std::size_t>(word.Variable - 1);
  if (index >= data.X.size()) throw NumericFault();  // a statistic of a variable that the data do not have
  const VariableStatistics& x = data.X[index];
  switch (word.What) {
    case Statistic::XMin:
      return x.InputXMin;
    case Statistic::XMax:
      return x.InputXMax;
    case Statistic::XMean:
      return x.XMean;
    case Statistic::XStd:
      return x.XStd;
    case Statistic::XAtYMin:
      return x.XAtYMin;
    case Statistic::XAtYMax:
      return x.XAtYMax;
    case Statistic::XRange:
      return std::abs(x.InputXMax - x.InputXMin);
    case Statistic::YAtXMin:
      return x.YAtXMin;
    default:
      return x.YAtXMax;
  }
}

}  // namespace

bool Evaluator::Evaluate(const Expression& expression, std::span<const double> x, std::span<const double> Values,
                         const DataStatistics& statistics, double& y) {
  try {
    ClearFaultFlags();
    const double value = Run(expression, x, Values, statistics);
    if (FaultFlagsRaised() || !std::isfinite(value)) return false;
    y = value;
    return true;
  } catch (const NumericFault&) {
    return false;
  }
}

// Not inlined, so that its arithmetic stays between the two looks at the flags.
[[gnu::noinline]] double Evaluator::Run(const Expression& expression, std::span<const double> x,
                                        std::span<const double> Values, const DataStatistics& statistics) {
  const std::vector<ExprToken>& tokens = expression.ExprTokens;
  if (EvalStack_.size() <= tokens.size()) EvalStack_.resize(tokens.size() + 1);
  double* const stack = EvalStack_.data();
  std::size_t sp = 0;
  // Each instruction pushes one value at most and jumps lead forward, so the stack cannot outgrow the list. It can run
  // dry only where a coefficient named like a jump word has broken the jump table.
  const auto need = [&](std::size_t count) {
    if (sp < count) throw NumericFault();
  };
  for (std::size_t pc = 1; pc <= tokens.size(); ++pc) {
    const ExprToken& token = tokens[pc - 1];
    const auto jump = [&](std::int16_t target) {
      if (target == 0) throw NumericFault();
      pc = static_cast<std::size_t>(target) - 1;
    };
    switch (token.Type) {
      case TokenKind::IndependentVariable:
        stack[++sp] = x[token.Code == 0 ? 0 : static_cast<std::size_t>(token.Code - 1)];
        break;
      case TokenKind::Literal:
        stack[++sp] = token.Value;
        break;
      case TokenKind::Unary:
        need(1);
        stack[sp] = token.Code == kNegate ? -stack[sp] : static_cast<double>(~RoundToInt32(stack[sp]));
        break;
      case TokenKind::Function:
        if (token.Code == kIfCode) {
          need(1);
          const IfJump& targets = expression.IfJumps[pc];
          jump(stack[sp] == 0 ? targets.FalseTarget : targets.TrueTarget);
          --sp;
        } else if (token.Code == kEndTrueCode) {
          jump(expression.IfJumps[pc].TrueTarget);
        } else if (token.Code != kEndIfCode) {
          const auto arguments =
              static_cast<std::size_t>(IntrinsicFunctions()[static_cast<std::size_t>(token.Code - 1)].Arguments);
          need(arguments);
          sp -= arguments - 1;
          stack[sp] = CallFunction(token.Code, stack + sp, random_);
        }
        break;
      case TokenKind::Binary:
        need(2);
        --sp;
        stack[sp] = BinaryOperation(token.Code, stack[sp], stack[sp + 1]);
        break;
      case TokenKind::Coefficient:
        stack[++sp] = Values[static_cast<std::size_t>(token.Index - 1)];
        break;
      case TokenKind::SpecialWord:
        stack[++sp] = StatisticValue(SpecialWordOf(token.Code), statistics);
        break;
      case TokenKind::SaveSupport:
        need(1);
        SupportValues_[static_cast<std::size_t>(token.Code)] = stack[sp];
        break;
      case TokenKind::RecallSupport:
        stack[++sp] = SupportValues_[static_cast<std::size_t>(token.Code)];
        break;
    }
  }
  need(1);
  return stack[sp];
}

}  // namespace quorvex
