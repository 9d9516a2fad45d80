#include "equation/Parser.h"

#include <algorithm>
#include <limits>
#include <map>
#include <optional>

#include "core/NumberText.h"
#include "equation/IntrinsicFunctions.h"

namespace quorvex {
namespace {

constexpr int kDeepestNesting = 1000;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsBlank(char c) { return c == '\r' || c == '\n' || c == '\t' || c == ' '; }

// A binary operator is accepted while the level asked for is at most Level; its right operand is parsed at Right, one
// above, which makes every operator left-associative.
struct BinaryOperator {
  std::string_view Text;
  int Level, Right;
  BinaryCode Code;
};

constexpr BinaryOperator kBinaryOperators[] = {
    {"^", 11, 12, kPower},         {"*", 10, 11, kMultiply}, {"/", 10, 11, kDivide},
    {"\\", 9, 10, kIntegerDivide}, {"mod", 8, 9, kMod},      {"+", 7, 8, kAdd},
    {"-", 7, 8, kSubtract},        {"=", 6, 7, kEqual},      {"<", 6, 7, kLess},
    {">", 6, 7, kGreater},         {"<>", 6, 7, kUnequal},   {"<=", 6, 7, kLessOrEqual},
    {">=", 6, 7, kGreaterOrEqual}, {"and", 5, 6, kAnd},      {"or", 4, 5, kOr},
    {"xor", 3, 4, kXor},           {"eqv", 2, 3, kEqv},      {"imp", 1, 2, kImp},
};

constexpr std::string_view kWordOperators[] = {"and", "eqv", "imp", "mod", "not", "or", "xor"};

// A token as a sentence shows it.
std::string Shortened(const std::string& token) {
  constexpr std::size_t kShown = 40;
  return token.size() <= kShown ? token : token.substr(0, kShown) + "...";
}

// "f1" to "f9" in any case; 0 for any other word.
int SupportFunctionNumber(std::string_view word) {
  const bool is = word.size() == 2 && (word[0] == 'f' || word[0] == 'F') && word[1] >= '1' && word[1] <= '9';
  return is ? word[1] - '0' : 0;
}

}  // namespace

Expression Parser::Compile(const std::vector<std::string>& sFuncList) {
  out_ = Expression();
  lines_ = &sFuncList;
  Cursor_ = CurrentLine_ = depth_ = conditions_ = 0;
  HasIf_ = false;
  variablesSeen_.clear();
  coefficients_.clear();

  ParseModel(sFuncList.empty() ? std::string() : sFuncList[0]);
  out_.ParseError = InError_;
  StripIndependentVar();
  out_.HasCoefficients = !coefficients_.empty();
  if (!InError_) {
    ExtractCoefficients();
    out_.IsValidEquation = out_.HasIndependentVar && out_.HasCoefficients;
    if (HasIf_ && !BuildIfJumps(out_.IfJumps, out_.ExprTokens))
      Warn("More than 100 'if' stand one within the other; the model has no value where such a one is reached.");
  }
  return std::move(out_);
}

void Parser::ParseModel(const std::string& text) {
  InError_ = false;
  CurrentOwner_ = 0;
  // Backwards, so that the next character is the last one, and the text of a supporting function is put in front by
  // appending it.
  InputText_.assign(text.rbegin(), text.rend());
  NextToken();
  ParseExpression(1);
  if (!InError_ && !TokenType_.empty()) Refuse("Unexpected token '" + TokenText_ + "'.");
}

void Parser::ParseExpression(int level) {
  if (++depth_ > kDeepestNesting) Refuse("The expression is nested too deeply.");
  if (!InError_) ParseFactor();
  while (!InError_) {
    const auto* op = std::find_if(std::begin(kBinaryOperators), std::end(kBinaryOperators),
                                  [&](const BinaryOperator& o) { return o.Level >= level && o.Text == TokenType_; });
    if (op == std::end(kBinaryOperators)) break;
    if (op->Code == kEqual && conditions_ == 0)
      Warn("'=' compares: it gives -1 where both sides are equal and 0 elsewhere.");
    EmitSource(TokenText_);
    NextToken();
    ParseExpression(op->Right);
    EmitToken(std::string(op->Text), TokenKind::Binary, op->Code);
  }
  --depth_;
}

void Parser::ParseFactor() {
  const std::string folded = ToLower(TokenType_);
  if (const auto variable = IndependentVariable(TokenType_, dialect_)) {
    EmitSource(TokenText_);
    EmitToken(*variable == 0 ? "x" : "x" + std::to_string(*variable), TokenKind::IndependentVariable, *variable);
    variablesSeen_.push_back(*variable);
    NextToken();
  } else if (folded.size() == 1 && folded[0] >= 'a' && folded[0] <= 't') {
    EmitSource("~" + TokenText_);
    EmitCoefficient(folded);
  } else if (TokenType_ == "num") {
    EmitSource(TokenText_);
    // A text that the conversion refuses, such as 1.2.3 or 1e, leaves 0 in its place and is no error.
    const std::optional<double> value = NumericText(TokenText_, locale_.DecimalSeparator);
    if (!value) Warn("'" + Shortened(TokenText_) + "' is not a number and counts as 0.");
    EmitToken(TokenText_, TokenKind::Literal, 0, value.value_or(0.0));
    NextToken();
  } else if (TokenType_ == "-") {
    EmitSource(TokenText_);
    NextToken();
    // A minus binds more loosely than "^" and more tightly than all else: -x^2 is -(x^2), and -a*b is (-a)*b.
    ParseExpression(11);
    EmitToken("neg", TokenKind::Unary, kNegate);
  } else if (folded == "not") {
    EmitSource(TokenText_);
    NextToken();
    // Comparisons bind more tightly than "not": not a = b is not (a = b).
    ParseExpression(6);
    EmitToken("not", TokenKind::Unary, kNot);
  } else if (TokenType_ == "(") {
    EmitSource(TokenText_);
    NextToken();
    ParseExpression(1);
    MatchToken(")");
    EmitSource(")");
  } else if (TokenType_.size() == 1 && TokenType_[0] == locale_.ListSeparator) {
    // A separator where a factor should start is skipped, not refused: a+,b is a+b.
    Warn("A '" + TokenText_ + "' in front of a value is skipped.");
    EmitSource(TokenText_);
    NextToken();
    ParseExpression(1);
  } else if (TokenType_ != "id") {
    Refuse(TokenType_.empty() ? "Expected end of model." : "Unexpected token '" + TokenText_ + "'.");
  } else if (const std::string word = ToLower(TokenText_);
             IsFunctionName(word, dialect_ == Dialect::SeveralVariables)) {
    ParseFunction(word);
  } else if (const int n = SupportFunctionNumber(TokenText_); n != 0) {
    ParseSupportFunction(n);
  } else if (const auto special = FindSpecialWord(word, dialect_)) {
    EmitSource(TokenText_);
    EmitToken(word, TokenKind::SpecialWord, SpecialWordCode(*special));
    NextToken();
  } else if (word == "pi") {
    std::string text = std::string("3") + locale_.DecimalSeparator + "14159265358979";
    EmitSource(TokenText_);
    EmitToken(std::move(text), TokenKind::Literal, 0, 3.14159265358979);
    NextToken();
  } else {
    EmitSource("~" + TokenText_);
    EmitCoefficient(TokenText_);
  }
}

void Parser::EmitCoefficient(std::string name) {
  EmitToken(std::move(name), TokenKind::Coefficient, 0);
  coefficients_.push_back(TokenText_);
  NextToken();
}

void Parser::ParseFunction(const std::string& word) {
  const IntrinsicFunction& function = *FindFunction(word);
  EmitSource(TokenText_);
  NextToken();
  MatchToken("(", word);
  EmitSource("(");
  const bool isIf = function.Code == kIfCode;
  if (isIf) HasIf_ = true;
  for (int argument = 1; argument <= function.Arguments && !InError_; ++argument) {
    const bool isCondition = isIf && argument == 1;
    if (isCondition) ++conditions_;
    ParseExpression(1);
    if (isCondition) --conditions_;
    if (argument == function.Arguments) break;
    MatchSeparator(word);
    // The list of an "if" reads: condition if, first value endtrue, second value endif. Each of the words is a jump or
    // the target of one.
    if (isIf) {
      if (argument == 1)
        EmitToken(word, TokenKind::Function, kIfCode);
      else
        EmitToken("endtrue", TokenKind::Function, kEndTrueCode);
    }
  }
  MatchToken(")", word);
  EmitSource(")");
  if (isIf)
    EmitToken("endif", TokenKind::Function, kEndIfCode);
  else
    EmitToken(word, TokenKind::Function, function.Code);
}

// The body is read in place, at the first reference, by putting it in front of what is left to read.
void Parser::ParseSupportFunction(int n) {
  const auto index = static_cast<std::size_t>(n);
  const std::string name = ToLower(TokenText_), word = TokenText_;
  if (Defined_[index]) {
    EmitSource(word);
    EmitToken(name, TokenKind::RecallSupport, n);
    NextToken();
    return;
  }
  if (Defining_[index] || index >= lines_->size()) {
    // No text goes with these two: whoever compiles looks at the flags.
    (Defining_[index] ? out_.CyclicError : out_.FuncMissing) = true;
    InError_ = true;
    return;
  }
  const int owner = CurrentOwner_, line = CurrentLine_, cursor = Cursor_;
  CurrentOwner_ = CurrentLine_ = n;
  // The parenthesis that is put in front below is no character of the line.
  Cursor_ = -1;
  Defining_[index] = true;

  const std::string& body = (*lines_)[index];
  // In parentheses, so that the body is one operand whatever stands beside the reference.
  InputText_ += ')';
  InputText_.append(body.rbegin(), body.rend());
  InputText_ += '(';
  NextToken();
  MatchToken("(");
  ParseExpression(1);
  MatchToken(")");
  EmitToken("save" + name, TokenKind::SaveSupport, n);

  CurrentOwner_ = owner;
  EmitSource(word);
  Defined_[index] = true;
  Defining_[index] = false;
  // The token behind the reference has been read by now, so positions further on in this line count without it.
  CurrentLine_ = line;
  Cursor_ = cursor;
}

char Parser::TakeCharacter() {
  if (InputText_.empty()) return '\0';
  const char c = InputText_.back();
  InputText_.pop_back();
  ++Cursor_;
  return c;
}

void Parser::PushBack(char c) {
  InputText_ += c;
  --Cursor_;
}

void Parser::NextToken() {
  TokenType_.clear();
  TokenText_.clear();
  bool atEnd = false;
  char c = 0;
  const auto take = [&] {
    atEnd = InputText_.empty();
    c = TakeCharacter();
  };
  do take();
  while (!atEnd && IsBlank(c));
  if (atEnd) return;

  if (IsDigit(c) || c == locale_.DecimalSeparator) {
    TokenType_ = "num";
    for (; !atEnd && (IsDigit(c) || c == locale_.DecimalSeparator); take()) TokenText_ += c;
    // Any sign behind the "e" is taken for the exponent's, so that 1e5-x is no difference, but 1e5 -x is.
    if (!atEnd && (c == 'e' || c == 'E')) {
      do {
        TokenText_ += c;
        take();
      } while (!atEnd && (IsDigit(c) || c == '-' || c == '+'));
    }
    if (!atEnd) PushBack(c);
  } else if (IsLetter(c) || c == '_') {
    TokenType_ = "id";
    for (; !atEnd && (IsLetter(c) || IsDigit(c) || c == '_'); take())
      TokenText_ += TokenText_.empty() || !IsLetter(c) ? c : static_cast<char>(c | 0x20);
    if (!atEnd) PushBack(c);
    const std::string folded = ToLower(TokenText_);
    const bool letter = folded.size() == 1 && folded[0] >= 'a' && folded[0] <= 't';
    // These words are types of their own, which the grammar tells apart by themselves.
    if (letter || IndependentVariable(folded, dialect_) ||
        std::find(std::begin(kWordOperators), std::end(kWordOperators), folded) != std::end(kWordOperators))
      TokenType_ = TokenText_;
  } else {
    TokenType_ = c;
    if (c == '<' || c == '>') {
      take();
      if (!atEnd && (c == '=' || c == '>'))
        TokenType_ += c;
      else if (!atEnd)
        PushBack(c);
    }
    // A character outside ASCII is one token, so that a message can show it.
    while (static_cast<unsigned char>(c) >= 0xC0 && !InputText_.empty() &&
           (static_cast<unsigned char>(InputText_.back()) & 0xC0) == 0x80)
      TokenType_ += TakeCharacter();
  }
  if (TokenText_.empty()) TokenText_ = TokenType_;
}

void Parser::MatchToken(std::string_view expected, const std::string& functionName) {
  if (!InError_ && TokenText_ != expected) {
    std::string message = "Missing token '" + std::string(expected) + "'";
    if (!functionName.empty()) message += " for function '" + functionName + "'";
    Refuse(message + ".");
  }
  NextToken();
}

void Parser::MatchSeparator(const std::string& functionName) {
  const std::string separator(1, locale_.ListSeparator);
  MatchToken(separator, functionName);
  EmitSource(separator);
}

// The counters of the published form are 16 bits wide; a longer list is refused.
void Parser::EmitToken(std::string name, TokenKind type, int code, double value) {
  if (InError_) return;
  if (out_.ExprTokens.size() == std::numeric_limits<std::int16_t>::max()) {
    Refuse("The expression is too long.");
    return;
  }
  out_.ExprTokens.push_back({type, std::move(name), 0, static_cast<std::int16_t>(code), value});
}

void Parser::EmitSource(std::string text) {
  if (InError_) return;
  if (out_.SourceTokens.size() == std::numeric_limits<std::int16_t>::max()) {
    Refuse("The expression is too long.");
    return;
  }
  out_.SourceTokens.push_back({std::move(text), static_cast<std::int16_t>(CurrentOwner_)});
}

// Records the first error with the place of the current token; later ones are consequences.
void Parser::Refuse(std::string message) {
  if (InError_) return;
  InError_ = true;
  out_.ParseErrorMessage = std::move(message);
  const int length = static_cast<int>(TokenText_.size());
  // A supporting function whose text closes more parentheses than it opens goes on in the line that refers to it, with
  // a token that may be longer than what was read of that line.
  out_.PublicTokenPointerStart = std::max(0, Cursor_ - length);
  out_.PublicTokenPointerLength = length;
  out_.PublicSubFunctionPointer = CurrentLine_;
}

void Parser::Warn(std::string sentence) {
  constexpr std::size_t kMost = 10;
  if (InError_ || out_.Warnings.size() == kMost) return;
  if (std::ranges::find(out_.Warnings, sentence) == out_.Warnings.end()) out_.Warnings.push_back(std::move(sentence));
}

void Parser::StripIndependentVar() {
  out_.HasIndependentVar = !variablesSeen_.empty();
  if (dialect_ == Dialect::OneVariable) {
    out_.NumIndependentVar = out_.HasIndependentVar ? 1 : 0;
    return;
  }
  std::sort(variablesSeen_.begin(), variablesSeen_.end());
  variablesSeen_.erase(std::unique(variablesSeen_.begin(), variablesSeen_.end()), variablesSeen_.end());
  const int count = static_cast<int>(variablesSeen_.size());
  const int highest = variablesSeen_.empty() ? 0 : variablesSeen_.back();
  out_.VarsInOrder = highest == count;
  out_.NumIndependentVar = highest;
}

void Parser::ExtractCoefficients() {
  std::map<std::string, std::int16_t> numbers;  // by lower-case spelling
  for (const std::string& spelled : coefficients_)
    if (numbers.try_emplace(ToLower(spelled)).second) out_.CoefficientNames.push_back(spelled);
  // The number of a coefficient does not depend on the order in which the lines name them.
  std::sort(out_.CoefficientNames.begin(), out_.CoefficientNames.end());
  std::int16_t number = 0;
  for (const std::string& name : out_.CoefficientNames) numbers[ToLower(name)] = ++number;
  for (ExprToken& token : out_.ExprTokens)
    if (token.Type == TokenKind::Coefficient) token.Index = numbers[ToLower(token.Name)];
}

bool AsksForStatistics(const Expression& expression) {
  return std::any_of(expression.ExprTokens.begin(), expression.ExprTokens.end(),
                     [](const ExprToken& token) { return token.Type == TokenKind::SpecialWord; });
}

bool BuildIfJumps(std::vector<IfJump>& jumps, const std::vector<ExprToken>& tokens) {
  constexpr std::size_t kDeepest = 100;
  jumps.assign(tokens.size() + 1, {});  // [0] is no instruction
  std::vector<std::size_t> ifs, trueEnds;
  const auto pop = [](std::vector<std::size_t>& stack) {
    const std::size_t top = stack.back();
    stack.pop_back();
    return top;
  };
  for (std::size_t i = 1; i <= tokens.size(); ++i) {
    const std::string& name = tokens[i - 1].Name;
    if (name == "if") {
      if (ifs.size() == kDeepest) return false;
      jumps[i].TrueTarget = static_cast<std::int16_t>(i + 1);
      ifs.push_back(i);
    } else if (name == "endtrue") {
      if (ifs.empty() || trueEnds.size() == kDeepest) return false;
      jumps[pop(ifs)].FalseTarget = static_cast<std::int16_t>(i + 1);
      trueEnds.push_back(i);
    } else if (name == "endif") {
      if (trueEnds.empty()) return false;
      jumps[pop(trueEnds)].TrueTarget = static_cast<std::int16_t>(i);
    }
  }
  return true;
}

}  // namespace quorvex
