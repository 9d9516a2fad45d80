#include "equation/CodeExport.h"

#include <algorithm>
#include <array>
#include <set>
#include <vector>

#include "core/Files.h"
#include "core/NumberText.h"
#include "core/Version.h"
#include "equation/CodeNames.h"
#include "equation/DataWordValue.h"
#include "equation/ExportNotes.h"
#include "equation/GenerateInfix.h"
#include "equation/GenerateTextInfix.h"

namespace quorvex {
namespace {

constexpr std::array kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

// What the two languages write differently around the same lines.
struct Language {
  std::string_view FunctionOpen, Before, ArrayMark, Behind;  // of the first line, around the names
  std::string_view RuleAbove, RuleBelow, Comment;
  std::string_view IndexOpen, IndexClose;
  std::string_view BodyOpen;  // a line of its own, if any
  std::string_view Constant, Is, ConstantEnd;
  std::string_view Variable, VariableEnd;
};

constexpr Language kBasic = {"public function ",
                             "(",
                             "()",
                             " as double) as double",
                             "'---------------------------------------------------------------",
                             "'---------------------------------------------------------------",
                             "'",
                             "(",
                             ")",
                             "",
                             "    const ",
                             " as double = ",
                             "",
                             "dim ",
                             " as double"};
constexpr Language kC = {"double ",
                         "(double ",
                         "[]",
                         ")",
                         "/*--------------------------------------------------------------*",
                         " *--------------------------------------------------------------*/",
                         "",
                         "[",
                         "]",
                         "{",
                         "    double ",
                         " = ",
                         ";",
                         "    double ",
                         ";"};

std::string TwoDigits(int n) { return (n < 10 ? "0" : "") + std::to_string(n); }

// "Nov 21 2026", with English names.
std::string DateText(const std::tm& t) {
  return std::string(kMonths[static_cast<std::size_t>(t.tm_mon)]) + " " + std::to_string(t.tm_mday) + " " +
         std::to_string(t.tm_year + 1900);
}

// "04:30:12 PM"; noon and midnight are at 12.
std::string TimeText(const std::tm& t) {
  return TwoDigits((t.tm_hour + 11) % 12 + 1) + ":" + TwoDigits(t.tm_min) + ":" + TwoDigits(t.tm_sec) +
         (t.tm_hour < 12 ? " AM" : " PM");
}

// Version and minor of the program's three numbers.
std::string VersionText() {
  const std::string_view version = kVersion;
  return std::string(version.substr(0, version.rfind('.')));
}

class SourceText {
 public:
  SourceText(const CodeExport& model, ExprType language, std::string_view name)
      : model_(model),
        inC_(language == ExprType::C),
        language_(inC_ ? kC : kBasic),
        names_(NamesFor(model.Compiled, language, name)),
        notes_(CodeNotes(model.Compiled, language)) {
    several_ = std::ranges::any_of(model.Compiled.ExprTokens, [](const ExprToken& token) {
      return token.Type == TokenKind::IndependentVariable && token.Code != 0;
    });
    GenerateInfix(model.Compiled, language, model.Locale, statements_, FnList_);
  }

  std::string Write(const std::tm& created) {
    if (inC_) {
      Line("#include <math.h>");
      Line();
      // C99 calls nothing that is not declared ahead.
      WriteCPrototypes(FnList_, text_);
      if (!text_.ends_with("\r\n\r\n")) Line();
    }
    std::string first(language_.FunctionOpen);
    first.append(names_.Function).append(language_.Before).append(names_.X);
    if (several_) first += language_.ArrayMark;
    Line(first.append(language_.Behind));
    Header(created);
    Body();
    inC_ ? WriteCLibrary(FnList_, text_) : WriteBasicLibrary(FnList_, text_);
    return std::move(text_);
  }

 private:
  void Line(std::string_view line = {}) { text_.append(line).append(NL); }

  void Comment(std::string_view text) {
    while (true) {
      const auto end = text.find(NL);
      Line(std::string(language_.Comment).append(text.substr(0, end)));
      if (end == std::string_view::npos) return;
      text.remove_prefix(end + NL.size());
    }
  }

  void Header(const std::tm& created) {
    Line();
    Line(language_.RuleAbove);
    Line();
    Comment("Quorvex version " + VersionText());
    Comment("Date Created: " + DateText(created));
    Comment("Time Created: " + TimeText(created));
    Line();
    Comment("This function returns a predicted f(x) value");
    if (several_) {
      Comment("The independent variables x1, x2, .. xn are passed in the");
      const std::string array = names_.X + std::string(language_.IndexOpen);
      const std::string close(language_.IndexClose);
      Comment("array " + array + close + ", where " + array + "1" + close + " = x1, et.");
    }
    Comment("for the function " + GenerateTextInfix(model_.Compiled, model_.Values, model_.Locale, 1, 0));
    for (const auto& [name, written] : names_.Changed)
      Comment("The name " + name + " is taken, so it is written " + written + ".");
    for (const std::string& note : notes_) Comment(note);
    Line();
    Comment("Regression Statistics:");
    Comment("R2 = " + GeneralNumber(model_.R2));
    Comment("Adjusted R2 = " + GeneralNumber(model_.R2Adjust));
    Comment("Standard Error = " + GeneralNumber(model_.StdErr));
    Line();
    Line(language_.RuleBelow);
    Line();
    Line();
  }

  void Body() {
    if (!language_.BodyOpen.empty()) Line(language_.BodyOpen);
    for (std::size_t i = 0; i < model_.Values.size(); ++i) Constant(names_.Coefficients[i], model_.Values[i]);
    DataWords();
    Variable(names_.Result);
    for (const ExprToken& token : model_.Compiled.ExprTokens)
      if (token.Type == TokenKind::SaveSupport) Variable("F" + std::to_string(token.Code));
    for (const std::string& statement : statements_) Line("    " + statement);
    if (inC_) {
      Line("    return " + names_.Result + ";");
      Line("}");
    } else {
      Line(names_.Function + " = " + names_.Result);
      Line();
      Line("end function");
    }
  }

  void Constant(const std::string& name, double value) {
    Line(std::string(language_.Constant) + name + std::string(language_.Is) + GeneralNumber(value) +
         std::string(language_.ConstantEnd));
  }

  void Variable(const std::string& name) {
    Line(std::string(language_.Variable) + name + std::string(language_.VariableEnd));
  }

  // The statistics that the model names; without them the source would speak of variables that nobody has set.
  void DataWords() {
    std::set<std::string_view> done;
    for (const ExprToken& token : model_.Compiled.ExprTokens) {
      if (token.Type != TokenKind::SpecialWord || !done.insert(token.Name).second) continue;
      if (const auto value = DataWordValue(token, model_.Statistics)) Constant(token.Name, *value);
    }
  }

  const CodeExport& model_;
  const bool inC_;
  const Language& language_;
  const CodeNames names_;
  const std::vector<std::string> notes_;
  bool several_ = false;
  std::vector<std::string> statements_, FnList_;
  std::string text_;
};

}  // namespace

std::string FunctionSource(const CodeExport& model, ExprType language, std::string_view name, const std::tm& created) {
  return SourceText(model, language, name).Write(created);
}

std::string FunctionName(std::string_view file) {
  file.remove_prefix(file.find_last_of("/\\") + 1);  // npos + 1 is 0
  if (const auto point = file.find('.', 1); point != std::string_view::npos) file = file.substr(0, point);
  std::string name(file);
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  for (char& c : name)
    if (!isDigit(c) && !((c | 0x20) >= 'a' && (c | 0x20) <= 'z')) c = '_';
  // Neither language lets a name start with a digit, and BASIC none with "_".
  if (name.empty() || isDigit(name[0]) || name[0] == '_') name.insert(0, "f");
  return name;
}

}  // namespace quorvex
