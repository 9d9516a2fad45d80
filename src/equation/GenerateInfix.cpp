#include "equation/GenerateInfix.h"

#include <algorithm>
#include <array>

#include "core/NumberText.h"
#include "equation/CodeNames.h"
#include "equation/RenderPostfix.h"

namespace quorvex {
namespace {

// What stands before, between and behind the operands in C. An operator without a middle has no form there: the first
// text is all of the entry. In BASIC every operator is its own word.
struct COperator {
  BinaryCode Code;
  std::string_view Open, Middle, Close;
};

constexpr std::array kCOperators = {
    COperator{kPower, "(pow(", " , ", "))"},
    COperator{kAdd, "(", " + ", ")"},
    COperator{kSubtract, "(", " - ", ")"},
    COperator{kMultiply, "(", " * ", ")"},
    COperator{kDivide, "(", " / ", ")"},
    COperator{kIntegerDivide, "(", " / ", ")"},
    COperator{kMod, "(fmod(", " , ", "))"},
    COperator{kEqual, "(", " == ", ")"},
    COperator{kLess, "(", " < ", ")"},
    COperator{kGreater, "(", " > ", ")"},
    COperator{kUnequal, "(", " != ", ")"},
    COperator{kLessOrEqual, "(", " <= ", ")"},
    COperator{kGreaterOrEqual, "(", " >= ", ")"},
    COperator{kAnd, "(", " && ", ")"},
    COperator{kOr, "(", " ||", ")"},
    COperator{kXor, "(", " ^ ", ")"},
    COperator{kEqv, "(Unsupported Function: eqv)", {}, {}},
    COperator{kImp, "(Unsupported C Function: imp)", {}, {}},
};

// A part of the code.
struct Part {
  std::string Text;
  bool Integer = false;  // an int in C, where 1 / 2 would be 0
  bool Unary = false;    // begins with a sign or Not, which binds more loosely than "^" in BASIC
};

class Generator {
 public:
  Generator(const Expression& expression, ExprType language, const LocaleText& locale,
            std::vector<std::string>& InFixList, std::vector<std::string>& FnList)
      : inC_(language == ExprType::C),
        language_(language),
        names_(NamesFor(expression, language)),
        locale_(locale),
        InFixList_(InFixList),
        FnList_(FnList) {}

  Part Render(const ExprToken& token, std::span<const Part> operands) {
    switch (token.Type) {
      case TokenKind::IndependentVariable:
        if (token.Code == 0) return {token.Name};
        return {names_.X + (inC_ ? "[" : "(") + std::to_string(token.Code) + (inC_ ? "]" : ")")};
      case TokenKind::Literal:
        return Literal(token);
      case TokenKind::Unary:
        if (token.Code == kNegate) return {"-(" + operands[0].Text + ")", operands[0].Integer, true};
        return {(inC_ ? "!(" : "Not(") + operands[0].Text + ")", true, true};
      case TokenKind::Binary:
        return Binary(token, operands[0], operands[1]);
      case TokenKind::Function:
        return Call(token.Code == kEndIfCode ? "if" : token.Name, operands);
      case TokenKind::Coefficient:  // as it is declared: one coefficient may be spelled in several ways
        return {names_.Coefficients[static_cast<std::size_t>(token.Index - 1)]};
      case TokenKind::SaveSupport:
        State(SupportName(token), operands[0].Text);
        return {SupportName(token)};
      case TokenKind::RecallSupport:
        return {SupportName(token)};
      default:
        return {token.Name};
    }
  }

  const CodeNames& Names() const { return names_; }

  void State(const std::string& name, const std::string& value) {
    InFixList_.push_back(name + " = " + value + (inC_ ? ";" : ""));
  }

 private:
  static std::string SupportName(const ExprToken& token) { return "F" + std::to_string(token.Code); }

  // A text that the parser took for 0 would be no number elsewhere either. In C, digits alone are an int where they are
  // few enough, and octal behind a leading 0.
  Part Literal(const ExprToken& token) const {
    if (!NumericText(token.Name, locale_.DecimalSeparator)) return {"0", true};
    std::string text = DelocalizeExpression(token.Name, locale_);
    const bool digits = std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
    const bool isInt = digits && text.size() <= 9 && (text[0] != '0' || text.size() == 1);
    if (inC_ && digits && !isInt) text += ".0";
    return {std::move(text), isInt};
  }

  static std::string Operand(const Part& part) { return part.Unary ? "(" + part.Text + ")" : part.Text; }

  Part Binary(const ExprToken& token, const Part& left, const Part& right) const {
    if (!inC_) return {"(" + Operand(left) + " " + token.Name + " " + Operand(right) + ")"};
    const COperator& form = kCOperators[static_cast<std::size_t>(token.Code - 1)];
    if (form.Middle.empty()) return {std::string(form.Open)};
    const bool arithmetic = token.Code >= kPower && token.Code <= kMod;
    std::string text(form.Open);
    if (arithmetic && left.Integer && right.Integer && form.Open == "(") text += "(double)";
    text.append(left.Text).append(form.Middle).append(right.Text).append(form.Close);
    return {std::move(text), !arithmetic};
  }

  Part Call(const std::string& word, std::span<const Part> arguments) {
    const CodeFunction& function = FindCodeFunction(word);
    if (function.OwnName(language_).empty() && std::ranges::find(FnList_, word) == FnList_.end())
      FnList_.push_back(word);
    std::string text(function.CallName(language_));
    char before = '(';
    for (const Part& argument : arguments) {
      (text += before) += argument.Text;
      before = ',';
    }
    return {text + ")"};
  }

  const bool inC_;
  const ExprType language_;
  const CodeNames names_;
  const LocaleText& locale_;
  std::vector<std::string>&InFixList_, &FnList_;
};

}  // namespace

void GenerateInfix(const Expression& expression, ExprType language, const LocaleText& locale,
                   std::vector<std::string>& InFixList, std::vector<std::string>& FnList) {
  Generator generator(expression, language, locale, InFixList, FnList);
  const Part result = RenderPostfix<Part>(
      expression.ExprTokens,
      [&](const ExprToken& token, std::span<const Part> operands) { return generator.Render(token, operands); });
  generator.State(generator.Names().Result, result.Text);
}

}  // namespace quorvex
