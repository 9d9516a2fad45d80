#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <set>

#include "code/CodeLanguage.h"
#include "code/FillText.h"
#include "core/NumberText.h"
#include "equation/DataWordValue.h"
#include "equation/RenderPostfix.h"

namespace quorvex {
namespace {

// A part of an expression, and what must be stated ahead of it.
struct Part {
  std::string Text;
  Binding Binds = Binding::Atom;
  std::string Truth = {};  // the same as a condition, where it is a truth; Text is then empty
  std::vector<std::string> Before = {};
  std::optional<int> Whole = {};  // of a whole number as written
};

// What texts in place of names may come to; formulas with supporting functions in one another grow beyond any bound.
constexpr std::size_t kLongestFormula = 100'000;
constexpr double kLargestWholeExponent = 1000;

// Signs, sums and products are written alike everywhere. A product of products keeps the order in which the program
// multiplies, for another one would round otherwise.
struct Infix {
  BinaryCode Code;
  std::string_view Text;
  Binding Binds;
};
constexpr std::array kInfixes = {Infix{kAdd, " + ", Binding::Sum}, Infix{kSubtract, " - ", Binding::Sum},
                                 Infix{kMultiply, " * ", Binding::Product}, Infix{kDivide, " / ", Binding::Product}};

constexpr std::string_view kComparisons[] = {" == ", " < ", " > ", " != ", " <= ", " >= "};  // from kEqual on

std::string InParentheses(const Part& part, Binding least) {
  return part.Binds >= least ? part.Text : "(" + part.Text + ")";
}

// The names of one file: each is told from all others, and from the words of the language.
class Names {
 public:
  explicit Names(const CodeLanguage& language) : language_(language) {
    for (const std::string_view word : language.Reserved) taken_.insert(Key(word));
    for (const CodeDefinition& definition : language.Definitions) taken_.insert(Key(definition.Name));
  }

  void Reserve(std::string_view name) { taken_.insert(Key(name)); }
  // `wanted`, or the first of wanted_1, wanted_2, ... that is free. What no name may hold becomes "_".
  std::string Take(std::string_view wanted) {
    std::string name;
    for (const char c : wanted) name += IsLetter(c) || (c >= '0' && c <= '9') ? c : '_';
    if (name.empty() || !IsLetter(name[0])) name.insert(0, "f");
    constexpr std::size_t kNumberLength = 6;  // for what tells it from others
    if (language_.LongestName > 0) name.resize(std::min(name.size(), language_.LongestName - kNumberLength));
    const std::string first = name;
    for (int n = 1; !taken_.insert(Key(name)).second; ++n) name = first + "_" + std::to_string(n);
    return name;
  }

 private:
  static bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
  std::string Key(std::string_view name) const { return language_.FoldsCase ? ToLower(name) : std::string(name); }

  const CodeLanguage& language_;
  std::set<std::string> taken_;
};

class Generator {
 public:
  Generator(const CodeModel& model, const CodeLanguage& language, CodeBody& body)
      : model_(model), language_(language), body_(body), names_(language) {}

  void Run(std::string_view function) {
    NameAll(function);
    FindUnset();
    Part result = RenderPostfix<Part>(
        model_.Compiled.ExprTokens,
        [&](const ExprToken& token, std::span<const Part> operands) { return Bounded(Render(token, operands)); });
    body_.Result = AsNumber(std::move(result), body_.Statements).Text;
  }

 private:
  void NameAll(std::string_view function);
  void FindUnset();
  std::string NameOrRemark(const std::string& name);
  Part Bounded(Part part);
  Part Render(const ExprToken& token, std::span<const Part> operands);
  Part Operator(const ExprToken& token, std::span<const Part> operands);
  Part Choice(std::span<const Part> operands);
  Part Save(const ExprToken& token, const Part& value);
  Part Call(const std::string& word, std::span<const Part> operands);
  Part Formed(const CodeForm& form, std::span<const Part> operands);
  Part AsNumber(Part part, std::vector<std::string>& before) const;
  std::string AsTruth(const Part& part) const;
  std::string Fill(std::string_view text, std::span<const Part> operands) const;
  const CodeForm* FindForm(std::string_view word) const;
  const double* FindDataWord(std::string_view word) const;
  void Need(std::string_view names);

  const CodeModel& model_;
  const CodeLanguage& language_;
  CodeBody& body_;
  Names names_;
  std::map<int, std::string> supports_;  // names, or where they are put in place the texts
};

// What cannot be renamed is taken first; the code's own names give way to the coefficients.
void Generator::NameAll(std::string_view function) {
  if (!language_.Substitutes)
    for (const std::string& name : model_.Compiled.CoefficientNames) body_.Coefficients.push_back(NameOrRemark(name));
  else
    for (const double value : model_.Values) body_.Coefficients.push_back(language_.Number(value));
  for (const ExprToken& token : model_.Compiled.ExprTokens) {
    if (token.Type == TokenKind::SaveSupport && !language_.Substitutes)
      body_.Supports.push_back(supports_[token.Code] = NameOrRemark("F" + std::to_string(token.Code)));
    if (token.Type != TokenKind::SpecialWord) continue;
    const std::string word = ToLower(token.Name);
    if (FindDataWord(word) != nullptr) continue;
    if (const auto value = DataWordValue(token, model_.Statistics)) {
      if (!language_.Substitutes) names_.Reserve(word);
      body_.DataWords.emplace_back(word, *value);
    }
  }
  const bool several = std::ranges::any_of(model_.Compiled.ExprTokens, [](const ExprToken& token) {
    return token.Type == TokenKind::IndependentVariable && token.Code != 0;
  });
  if (language_.Substitutes)
    for (int v = 0; v < model_.Variables; ++v)
      body_.Variables.push_back(std::string(1, static_cast<char>('A' + v)) + "2");
  else if (!several)
    body_.Variables.push_back(names_.Take("x"));
  for (int v = 1; !language_.Substitutes && several && v <= model_.Variables; ++v)
    body_.Variables.push_back(names_.Take("x" + std::to_string(v)));
  body_.Function = names_.Take(function);
}

// What is saved in a branch has its value only there.
void Generator::FindUnset() {
  std::vector<int> branches;  // where the token is: a number for each "if" around it, and its opposite behind "endtrue"
  std::map<int, std::vector<int>> saved;
  int ifs = 0;
  for (const ExprToken& token : model_.Compiled.ExprTokens) {
    const bool isFunction = token.Type == TokenKind::Function;
    if (isFunction && token.Code == kIfCode) branches.push_back(++ifs);
    if (isFunction && token.Code == kEndTrueCode) branches.back() *= -1;
    if (isFunction && token.Code == kEndIfCode) branches.pop_back();
    if (token.Type == TokenKind::SaveSupport) saved[token.Code] = branches;
    if (token.Type != TokenKind::RecallSupport) continue;
    const std::vector<int>& where = saved[token.Code];
    const std::string name = "F" + std::to_string(token.Code);
    const bool isSet =
        where.size() <= branches.size() && std::ranges::equal(where, std::span(branches).first(where.size()));
    if (!isSet && std::ranges::find(body_.Unset, name) == body_.Unset.end()) body_.Unset.push_back(name);
  }
}

std::string Generator::NameOrRemark(const std::string& name) {
  std::string free = names_.Take(name);
  if (free != name) body_.Remarks.push_back("The name " + name + " is taken, so it is written " + free + ".");
  return free;
}

const CodeForm* Generator::FindForm(std::string_view word) const {
  const auto form = std::ranges::find(language_.Forms, word, &CodeForm::Word);
  return form == language_.Forms.end() ? nullptr : &*form;
}

const double* Generator::FindDataWord(std::string_view word) const {
  const auto found = std::ranges::find(body_.DataWords, word, &std::pair<std::string, double>::first);
  return found == body_.DataWords.end() ? nullptr : &found->second;
}

void Generator::Need(std::string_view names) {
  while (!names.empty()) {
    const std::string_view name = names.substr(0, names.find(' '));
    names.remove_prefix(std::min(names.size(), name.size() + 1));
    const auto definition = std::ranges::find(language_.Definitions, name, &CodeDefinition::Name);
    if (definition == language_.Definitions.end()) continue;
    if (std::ranges::find(body_.Definitions, &*definition) != body_.Definitions.end()) continue;
    Need(definition->Needs);
    body_.Definitions.push_back(&*definition);
  }
}

std::string Generator::Fill(std::string_view text, std::span<const Part> operands) const {
  std::string filled;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isMark = (text[i] == '$' || text[i] == '#' || text[i] == '@') && i + 1 < text.size() &&
                        text[i + 1] >= '1' && text[i + 1] <= '9' &&
                        static_cast<std::size_t>(text[i + 1] - '1') < operands.size();
    if (!isMark) {
      filled += text[i];
      continue;
    }
    const Part& operand = operands[static_cast<std::size_t>(text[i + 1] - '1')];
    const char mark = text[i++];
    if (mark == '@' && !operand.Whole)
      filled += Fill(language_.Rounded, {&operand, 1});
    else
      filled += mark == '#' ? InParentheses(operand, Binding::Atom) : operand.Text;
  }
  return filled;
}

// What must be stated ahead goes to `before`, in the order in which the program computes it.
Part Generator::AsNumber(Part part, std::vector<std::string>& before) const {
  before.insert(before.end(), part.Before.begin(), part.Before.end());
  part.Before.clear();
  if (!part.Truth.empty()) return {FillText(language_.Truth.AsNumber, {part.Truth})};
  return part;
}

std::string Generator::AsTruth(const Part& part) const {
  return part.Truth.empty() ? Fill(language_.Truth.OfNumber, {&part, 1}) : part.Truth;
}

Part Generator::Formed(const CodeForm& form, std::span<const Part> operands) {
  Need(form.Needs);
  Part whole{"", form.Binds};
  std::vector<Part> numbers;
  for (const Part& operand : operands) numbers.push_back(AsNumber(operand, whole.Before));
  whole.Text = Fill(form.Text, numbers);
  return whole;
}

Part Generator::Bounded(Part part) {
  if (!language_.Substitutes || part.Text.size() + part.Truth.size() <= kLongestFormula) return part;
  body_.TooLong = true;
  return {"0"};
}

Part Generator::Render(const ExprToken& token, std::span<const Part> operands) {
  switch (token.Type) {
    case TokenKind::IndependentVariable:
      return {body_.Variables[token.Code == 0 ? 0 : static_cast<std::size_t>(token.Code - 1)]};
    case TokenKind::Literal: {
      Part number{language_.Number(token.Value)};
      if (token.Value == std::trunc(token.Value) && token.Value <= kLargestWholeExponent)
        number.Whole = static_cast<int>(token.Value);
      return number;
    }
    case TokenKind::Unary:
    case TokenKind::Binary:
      return Operator(token, operands);
    case TokenKind::Function:
      return token.Code == kEndIfCode ? Choice(operands) : Call(token.Name, operands);
    case TokenKind::Coefficient: {
      const std::string& name = body_.Coefficients[static_cast<std::size_t>(token.Index - 1)];
      return {name, name.starts_with('-') ? Binding::Sign : Binding::Atom};
    }
    case TokenKind::SpecialWord: {
      const std::string name = ToLower(token.Name);
      const double* known = FindDataWord(name);
      if (known == nullptr) return Call(name, {});  // of a variable that the data don't have
      if (!language_.Substitutes) return {name};
      const std::string value = language_.Number(*known);
      return {value, value.starts_with('-') ? Binding::Sign : Binding::Atom};
    }
    case TokenKind::SaveSupport:
      return Save(token, operands[0]);
    case TokenKind::RecallSupport:
      return {supports_[token.Code]};
  }
  return {};
}

Part Generator::Operator(const ExprToken& token, std::span<const Part> operands) {
  Part whole;
  const bool isUnary = token.Type == TokenKind::Unary;
  const auto truths = [&] {
    return std::ranges::all_of(operands, [](const Part& part) { return !part.Truth.empty(); });
  };
  const auto takeBefore = [&] {
    for (const Part& part : operands) whole.Before.insert(whole.Before.end(), part.Before.begin(), part.Before.end());
  };
  // Logic on truths is logic everywhere; on numbers it works on bits.
  const std::string_view logic = isUnary && token.Code == kNot    ? language_.Truth.Not
                                 : !isUnary && token.Code == kAnd ? language_.Truth.And
                                 : !isUnary && token.Code == kOr  ? language_.Truth.Or
                                                                  : std::string_view();
  if (!logic.empty() && truths()) {
    takeBefore();
    whole.Truth =
        isUnary ? FillText(logic, {operands[0].Truth}) : FillText(logic, {operands[0].Truth, operands[1].Truth});
    return whole;
  }
  const std::string word = isUnary ? (token.Code == kNegate ? "neg" : "not") : ToLower(token.Name);
  if (const CodeForm* form = FindForm("^whole"); form != nullptr && word == "^" && operands[1].Whole) {
    const Part of[] = {operands[0], {std::to_string(*operands[1].Whole)}};
    return Formed(*form, of);
  }
  if (const CodeForm* form = FindForm(word)) {
    const bool compares = !isUnary && token.Code >= kEqual && token.Code <= kGreaterOrEqual;
    whole = Formed(*form, operands);
    if (compares) whole.Truth = std::exchange(whole.Text, "");
    return whole;
  }
  if (isUnary && token.Code == kNegate) {
    const Part number = AsNumber(operands[0], whole.Before);
    whole.Text = "-" + InParentheses(number, Binding::Power);
    whole.Binds = Binding::Sign;
    return whole;
  }
  if (isUnary) return Call(word, operands);
  const Part left = AsNumber(operands[0], whole.Before), right = AsNumber(operands[1], whole.Before);
  if (token.Code >= kEqual && token.Code <= kGreaterOrEqual) {
    whole.Truth = InParentheses(left, Binding::Sum) + std::string(kComparisons[token.Code - kEqual]) +
                  InParentheses(right, Binding::Sum);
    return whole;
  }
  const auto* infix = std::ranges::find(kInfixes, static_cast<BinaryCode>(token.Code), &Infix::Code);
  if (infix == kInfixes.end()) return Call(word, operands);
  // The left operand may begin with a sign, the right one not.
  const std::string_view sign = token.Code == kMultiply ? language_.Times
                                : token.Code == kDivide ? language_.Over
                                                        : infix->Text;
  const Binding least = right.Text.starts_with('-')    ? Binding::Atom
                        : infix->Binds == Binding::Sum ? Binding::Product
                                                       : Binding::Power;
  whole.Text = InParentheses(left, infix->Binds) + std::string(sign) + InParentheses(right, least);
  whole.Binds = infix->Binds;
  return whole;
}

Part Generator::Choice(std::span<const Part> operands) {
  const Part &condition = operands[0], &then = operands[1], &otherwise = operands[2];
  Part whole;
  whole.Before = condition.Before;
  const bool inOne = !language_.Choice.empty() && then.Before.empty() && otherwise.Before.empty();
  if (inOne) {
    const std::string one = AsNumber(then, whole.Before).Text, other = AsNumber(otherwise, whole.Before).Text;
    whole.Text = FillText(language_.Choice, {AsTruth(condition), one, other});
    return whole;
  }
  // Only the branch that is taken may be computed: the other one may have no value.
  whole.Text = names_.Take("part" + std::to_string(body_.Choices.size() + 1));
  body_.Choices.push_back(whole.Text);
  const auto branch = [&](const Part& part) {
    std::vector<std::string> lines;
    const std::string value = AsNumber(part, lines).Text;
    lines.push_back(FillText(language_.Statements.Assign, {whole.Text, value}));
    for (const std::string& line : lines) whole.Before.push_back("    " + line);
  };
  whole.Before.push_back(FillText(language_.Statements.If, {AsTruth(condition)}));
  branch(then);
  whole.Before.emplace_back(language_.Statements.Else);
  branch(otherwise);
  if (!language_.Statements.End.empty()) whole.Before.emplace_back(language_.Statements.End);
  return whole;
}

Part Generator::Save(const ExprToken& token, const Part& value) {
  Part whole;
  const Part number = AsNumber(value, whole.Before);
  if (language_.Substitutes) {
    whole.Text = supports_[token.Code] = InParentheses(number, Binding::Atom);
    return whole;
  }
  const std::string& name = supports_[token.Code];
  if (!language_.Save.empty()) {
    whole.Text = FillText(language_.Save, {name, number.Text});
    return whole;
  }
  whole.Before.push_back(FillText(language_.Statements.Assign, {name, number.Text}));
  whole.Text = name;
  return whole;
}

// A word that the language has nothing for is the call of a function of that name.
Part Generator::Call(const std::string& word, std::span<const Part> operands) {
  if (const CodeForm* form = FindForm(word)) return Formed(*form, operands);
  // A language without any form is written by other means.
  const bool isKnown = language_.Forms.empty() || std::ranges::find(body_.Missing, word) != body_.Missing.end();
  if (!isKnown) body_.Missing.push_back(word);
  Part whole;
  whole.Text = word + "_of_the_user(";
  for (std::size_t i = 0; i < operands.size(); ++i)
    whole.Text += (i > 0 ? ", " : "") + AsNumber(operands[i], whole.Before).Text;
  whole.Text += ')';
  return whole;
}

}  // namespace

CodeBody GenerateBody(const CodeModel& model, const CodeLanguage& language, std::string_view function) {
  CodeBody body;
  Generator(model, language, body).Run(function);
  for (const std::string& name : body.Unset)
    body.Remarks.push_back(name + " is first met in a branch of an if. Where that is not taken, " +
                           (language.Substitutes ? "the formula computes it" : "it is 0 here") +
                           "; Quorvex keeps its last value.");
  for (const std::string& word : body.Missing)
    body.Remarks.push_back(std::string(language.Name) + " has no function for " + word + ": supply one called " + word +
                           "_of_the_user.");
  return body;
}

}  // namespace quorvex
