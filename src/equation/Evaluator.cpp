#include "equation/Evaluator.h"

#include <cmath>

#include "core/FaultFlags.h"
#include "core/NumericFault.h"
#include "equation/Dialect.h"
#include "equation/Operators.h"

namespace quorvex {

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
  // Instructions count from 1, as the targets of jumps do: 0 is no target.
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
        stack[sp] = UnaryOperation(token.Code, stack[sp]);
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
