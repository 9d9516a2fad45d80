#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "core/LocaleText.h"
#include "equation/Dialect.h"
#include "equation/Expression.h"

namespace quorvex {

// Compiles a model's lines into an instruction list, in one pass: a recursive procedure climbs the levels of precedence
// and emits instructions as it returns; there is no syntax tree.
//
// A parser serves one model object. Which supporting functions it has compiled is kept from one Compile to the next, so
// a second model text that uses F1 would recall a body that was never emitted: every model is compiled on a new object.
class Parser {
 public:
  Parser(Dialect dialect, const LocaleText& locale) : dialect_(dialect), locale_(locale) {}

  // Compiles `sFuncList`: [0] the model line, [n] the right-hand side of Fn. Never throws; the result says what is
  // wrong. Expressions nested deeper than 1,000 levels or longer than 32,767 instructions are refused.
  Expression Compile(const std::vector<std::string>& sFuncList);

 private:
  void ParseModel(const std::string& text);
  void ParseExpression(int level);
  void ParseFactor();
  void ParseFunction(const std::string& word);
  void ParseSupportFunction(int n);
  void NextToken();
  char TakeCharacter();
  void PushBack(char c);
  void MatchToken(std::string_view expected, const std::string& functionName = {});
  void MatchSeparator(const std::string& functionName);
  void EmitToken(std::string name, TokenKind type, int code, double value = 0);
  void EmitSource(std::string text);
  void Refuse(std::string message);
  void Warn(std::string sentence);
  void EmitCoefficient(std::string name);
  void StripIndependentVar();
  void ExtractCoefficients();

  const Dialect dialect_;
  const LocaleText locale_;
  std::array<bool, 10> Defining_{};  // Fn is being compiled now
  std::array<bool, 10> Defined_{};   // Fn has been compiled

  Expression out_;
  const std::vector<std::string>* lines_ = nullptr;
  std::string InputText_;  // what is left to read, reversed: the next character is at the back
  std::string TokenType_, TokenText_;
  int Cursor_ = 0;
  int CurrentLine_ = 0, CurrentOwner_ = 0;
  int depth_ = 0;
  int conditions_ = 0;  // of an "if" that are being parsed
  bool InError_ = false;
  bool HasIf_ = false;
  std::vector<int> variablesSeen_;         // numbers of the independent variables, in order of discovery
  std::vector<std::string> coefficients_;  // as spelled, in order of appearance, with repeats
};

}  // namespace quorvex
