#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quorvex {

// The kinds of instruction of a compiled model. The numbers are part of the published form of the language.
enum class TokenKind : std::int16_t {
  IndependentVariable = 1,
  Literal = 2,
  Unary = 3,
  Function = 4,
  Binary = 5,
  Coefficient = 6,
  SpecialWord = 7,
  SaveSupport = 8,
  RecallSupport = 9,
};

// Codes of unary and binary operators.
enum UnaryCode : std::int16_t { kNegate = 1, kNot = 2 };
enum BinaryCode : std::int16_t {
  kPower = 1,
  kAdd,
  kSubtract,
  kMultiply,
  kDivide,
  kIntegerDivide,
  kMod,
  kEqual,
  kLess,
  kGreater,
  kUnequal,
  kLessOrEqual,
  kGreaterOrEqual,
  kAnd,
  kOr,
  kXor,
  kEqv,
  kImp,
};

// The code of the exponential function.
inline constexpr int kExpCode = 2;

// Codes of the functions that are control flow.
inline constexpr int kIfCode = 45, kEndTrueCode = 46, kEndIfCode = 47;

// One instruction of a compiled model, in postfix order.
struct ExprToken {
  TokenKind Type;
  std::string Name;        // display name: the variable, operator or function word, or the number's text
  std::int16_t Index = 0;  // of a coefficient: its number in the sorted list, from 1
  std::int16_t Code = 0;   // number of the operator, function, variable, special word or supporting function
  double Value = 0;        // the literal's value
};

// Where an "if" goes on when its condition holds and when not, and where an "endtrue" jumps. Instruction numbers from
// 1; 0 is no target.
struct IfJump {
  std::int16_t TrueTarget = 0;
  std::int16_t FalseTarget = 0;
};

// A token as it was written, for printing the solved equation again. A coefficient has "~" in front.
struct SourceToken {
  std::string Text;
  std::int16_t Owner;  // the line it belongs to: 0 the model line, n the line of Fn
};

// A model's text in compiled form, with what the compiler found out about it.
struct Expression {
  std::vector<ExprToken> ExprTokens;
  std::vector<IfJump> IfJumps;  // one per instruction, or empty where the model has no "if"
  std::vector<SourceToken> SourceTokens;
  std::vector<std::string> CoefficientNames;  // sorted by character code

  bool HasIndependentVar = false;
  bool HasCoefficients = false;
  int NumIndependentVar = 0;
  bool VarsInOrder = false;  // several variables: those from 1 to the highest all occur
  bool IsValidEquation = false;

  bool ParseError = false;
  std::string ParseErrorMessage;
  int PublicTokenPointerStart = -1;  // the offending token in its line, from 0; -1 without an error
  int PublicTokenPointerLength = -1;
  int PublicSubFunctionPointer = 0;  // the line of the error: 0 the model line, n the line of Fn
  bool CyclicError = false;
  bool FuncMissing = false;

  // What compiles, but hardly as it was meant: sentences for the user, each once.
  std::vector<std::string> Warnings;
};

// Whether the text has words such as "xmean", which speak of data.
bool AsksForStatistics(const Expression& expression);

// Fills `jumps` from the finished list by the names "if", "endtrue" and "endif". Good for 100 levels of nesting; where
// the nesting is deeper, or does not close, the answer is false, the table stays partial and evaluation faults at the
// missing target.
bool BuildIfJumps(std::vector<IfJump>& jumps, const std::vector<ExprToken>& tokens);

}  // namespace quorvex
