#include <algorithm>
#include <array>
#include <cmath>

#include "code/CodeLanguage.h"
#include "code/FillText.h"
#include "code/Languages.h"
#include "core/NumberText.h"
#include "core/TextEncoding.h"
#include "equation/CodeExport.h"

namespace quorvex {
namespace {

constexpr std::array kLanguages = {&kPython,  &kR,    &kJavaScript, &kJulia,      &kMatlab,
                                   &kFortran, &kRust, &kLatex,      &kSpreadsheet};

}  // namespace

std::span<const CodeLanguage* const> CodeLanguages() { return kLanguages; }

const CodeLanguage* LanguageOfFile(std::string_view file) {
  const auto point = file.rfind('.');
  if (point == std::string_view::npos) return nullptr;
  const auto found = std::ranges::find_if(
      kLanguages, [&](const CodeLanguage* each) { return EqualNoCase(each->Extension, file.substr(point + 1)); });
  return found == kLanguages.end() ? nullptr : *found;
}

std::string WriteCode(const CodeModel& model, const CodeLanguage& language, std::string_view function) {
  return language.Write(model, GenerateBody(model, language, function), language);
}

Result<std::string> CodeForFile(ModelClass& model, std::string_view file) {
  const CodeLanguage* language = LanguageOfFile(file);
  if (language == nullptr) return Failure{UnknownLanguageText(file)};
  return WriteCode(DescribeForCode(model), *language, FunctionName(file));
}

std::string UnknownLanguageText(std::string_view file) {
  std::string endings;
  for (std::size_t i = 0; i < kLanguages.size(); ++i)
    endings.append(i == 0 ? "." : i + 1 == kLanguages.size() ? " or ." : ", .").append(kLanguages[i]->Extension);
  return "The code '" + std::string(file) + "' is not written: its name ends in none of " + endings + ".";
}

// Comments of several languages end at "*/", "#=" or the like, MATLAB goes on behind "...", and Python looks for
// "coding:" in the first ones: with a blank between its characters no such mark stays one. A backslash at the end would
// join lines. Bytes that are no UTF-8, and signs that turn the direction of what follows, make a file invalid.
std::string CommentText(std::string_view text) {
  constexpr std::string_view kDirections[] = {"\u061C", "\u200E", "\u200F", "\u202A", "\u202B", "\u202C", "\u202D",
                                              "\u202E", "\u2066", "\u2067", "\u2068", "\u2069", "\uFEFF"};
  std::string safe;
  while (!text.empty()) {
    const std::size_t length = Utf8Length(text);
    const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
    text.remove_prefix(character.size());
    const bool isControl = static_cast<unsigned char>(character[0]) < ' ' || character[0] == '\x7f' ||
                           (character >= "\xC2\x80" && character <= "\xC2\x9F");
    if (length == 0)
      safe += "\uFFFD";
    else if (isControl || character == "\u2028" || character == "\u2029")
      safe += ' ';
    else if (std::ranges::find(kDirections, character) == std::end(kDirections))
      safe += character;
  }
  for (const auto& [mark, instead] : {std::pair{"*/", "* /"},
                                      {"/*", "/ *"},
                                      {"\"\"\"", "\" \" \""},
                                      {"=#", "= #"},
                                      {"coding:", "coding :"},
                                      {"coding=", "coding ="}})
    for (auto at = safe.find(mark); at != std::string::npos; at = safe.find(mark))
      safe.replace(at, std::string_view(mark).size(), instead);
  while (safe.ends_with('\\') || safe.ends_with(' ')) safe.pop_back();
  return safe;
}

std::string CommentLines(const CodeLanguage& language, std::string_view text) {
  std::string lines;
  while (!text.empty()) {
    const std::string line = CommentText(TakeLine(text));
    lines.append(language.Comment).append(line.empty() ? "" : " ").append(line).append("\n");
  }
  return lines;
}

std::string CommentHead(const CodeModel& model, const CodeBody& body, const CodeLanguage& language) {
  std::string head = CommentLines(language, model.Title);
  head.append(language.Comment).append("\n");
  head += CommentLines(language, model.Definition);
  const auto paragraph = [&](const std::vector<std::string>& lines) {
    if (!lines.empty()) head.append(language.Comment).append("\n");
    for (const std::string& line : lines) head += CommentLines(language, line);
  };
  paragraph(model.Remarks);
  paragraph(body.Remarks);
  return head;
}

std::string DefinitionText(const CodeBody& body) {
  std::string text;
  for (const CodeDefinition* definition : body.Definitions) text.append("\n").append(definition->Text).append("\n");
  return text;
}

std::vector<std::string> FunctionLines(const CodeModel& model, const CodeBody& body, const CodeLanguage& language) {
  std::vector<std::string> lines;
  const auto add = [&](std::string_view form, std::initializer_list<std::string_view> parts) {
    if (!form.empty()) lines.push_back(FillText(form, parts));
  };
  const CodeFrame& frame = language.Frame;
  for (std::size_t i = 0; i < body.Coefficients.size(); ++i)
    add(frame.Constant, {body.Coefficients[i], language.Number(model.Values[i])});
  for (const auto& [word, value] : body.DataWords) add(frame.Constant, {word, language.Number(value)});
  for (const std::string& name : body.Supports) add(frame.Support, {name});
  for (const std::string& name : body.Choices) add(frame.Choice, {name});
  for (const std::string& name : body.Supports) add(frame.SupportAtFirst, {name});
  lines.insert(lines.end(), body.Statements.begin(), body.Statements.end());
  add(frame.Result, {body.Result, body.Function});
  return lines;
}

std::string FunctionText(const CodeModel& model, const CodeBody& body, const CodeLanguage& language) {
  std::vector<std::string> variables;
  for (const std::string& name : body.Variables) variables.push_back(FillText(language.Frame.Variable, {name}));
  std::string text = FillText(language.Frame.Function, {body.Function, CommaList(variables), body.Variables[0]});
  for (const std::string& line : FunctionLines(model, body, language)) text.append("    ").append(line).append("\n");
  return text + FillText(language.Frame.End, {body.Function});
}

std::string ProofText(const CodeModel& model, const CodeBody& body, const CodeLanguage& language) {
  if (!model.Proof) return "";
  return FillText(language.Frame.Proof, {ProofCall(model, body, language), language.Number(model.Proof->Y)});
}

std::string WriteFramed(const CodeModel& model, const CodeBody& body, const CodeLanguage& language) {
  return CommentHead(model, body, language) + DefinitionText(body) + FunctionText(model, body, language) +
         ProofText(model, body, language);
}

std::string CommaList(std::span<const std::string> texts) {
  std::string list;
  for (const std::string& text : texts) list.append(list.empty() ? "" : ", ").append(text);
  return list;
}

std::string ProofCall(const CodeModel& model, const CodeBody& body, const CodeLanguage& language) {
  std::vector<std::string> numbers;
  for (const double x : model.Proof->X) numbers.push_back(language.Number(x));
  return body.Function + "(" + CommaList(numbers) + ")";
}

std::string RealNumber(double value) {
  std::string text = ShortestNumber(value);
  if (text.find_first_of(".E") == std::string::npos) text += ".0";
  return text;
}

std::string PlainNumber(double value) { return ShortestNumber(value); }

bool HasFurtherDigits(double value) { return NumericText(GeneralNumber(value)) != value; }

}  // namespace quorvex
