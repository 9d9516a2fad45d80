#pragma once

#include <span>
#include <utility>
#include <vector>

#include "equation/Expression.h"
#include "equation/IntrinsicFunctions.h"

namespace quorvex {

// How many operands an instruction takes off the stack.
inline std::size_t OperandCount(const ExprToken& token) {
  switch (token.Type) {
    case TokenKind::Unary:
    case TokenKind::SaveSupport:
      return 1;
    case TokenKind::Binary:
      return 2;
    case TokenKind::Function:  // the three parts of an "if" are on the stack when "endif" is reached
      return token.Code == kEndIfCode
                 ? 3
                 : static_cast<std::size_t>(IntrinsicFunctions()[static_cast<std::size_t>(token.Code - 1)].Arguments);
    default:
      return 0;
  }
}

// Rebuilds nested text from a complete instruction list, in the order in which it is evaluated. `render(token,
// operands)` gives the text of one instruction from those of its operands, in written order; it is not called for "if"
// and "endtrue", whose parts meet at "endif". Returns the text of the whole.
template <typename Text, typename Render>
Text RenderPostfix(const std::vector<ExprToken>& tokens, Render render) {
  std::vector<Text> stack;
  for (const ExprToken& token : tokens) {
    if (token.Type == TokenKind::Function && (token.Code == kIfCode || token.Code == kEndTrueCode)) continue;
    const std::size_t count = OperandCount(token);
    Text text = render(token, std::span<const Text>(stack).last(count));
    stack.resize(stack.size() - count);
    stack.push_back(std::move(text));
  }
  return std::move(stack.back());
}

}  // namespace quorvex
