#include "equation/GenerateTextInfix.h"

#include <array>

#include "core/Files.h"
#include "core/NumberText.h"

namespace quorvex {
namespace {

std::string ValueOf(std::string_view name, const Expression& expression, std::span<const double> Values,
                    const LocaleText& locale) {
  std::size_t i = 0;
  while (!EqualNoCase(expression.CoefficientNames[i], name)) ++i;
  return LocalizeExpression(GeneralNumber(Values[i]), locale);
}

}  // namespace

std::string GenerateTextInfix(const Expression& expression, std::span<const double> Values, const LocaleText& locale,
                              int ReplaceOption, int AppendParameters) {
  std::array<std::string, 10> lines;  // by owner
  for (const SourceToken& token : expression.SourceTokens) {
    std::string& line = lines[static_cast<std::size_t>(token.Owner)];
    if (!token.Text.starts_with('~')) {
      line += token.Text;
    } else {
      const std::string name = token.Text.substr(1);
      line += ReplaceOption == 0 ? ValueOf(name, expression, Values, locale) : name;
    }
  }

  std::string text = "Y = " + lines[0];
  for (std::size_t n = 1; n < lines.size(); ++n)
    if (!lines[n].empty()) text.append(NL) += "F" + std::to_string(n) + " = " + lines[n];
  if (AppendParameters != 0) {
    text += NL;
    for (const std::string& name : expression.CoefficientNames)
      text.append(NL) += name + " = " + ValueOf(name, expression, Values, locale);
  }
  return text;
}

}  // namespace quorvex
