#include "equation/GenerateTextInfix.h"

#include <array>
#include <vector>

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

// A token of a line as it is to be written.
struct Piece {
  std::string Text;
  bool IsValue = false;  // a number in the place of a coefficient
};

bool IsWordCharacter(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

// Whether a number ends within an exponent, to which a sign behind it would belong.
bool HasExponent(const std::string& text, char decimalSeparator) {
  const bool isNumber =
      !text.empty() && ((text[0] >= '0' && text[0] <= '9') || text[0] == '-' || text[0] == decimalSeparator);
  return isNumber && text.find_first_of("eE") != std::string::npos;
}

// A value whose sign would go to the whole power, or whose exponent would take the sign behind it, gets parentheses;
// tokens that would read as one get a blank between them.
std::string Joined(const std::vector<Piece>& line, char decimalSeparator) {
  std::string text;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const std::string& piece = line[i].Text;
    const std::string next = i + 1 < line.size() ? line[i + 1].Text : "";
    const bool signFollows = (next == "+" || next == "-") && HasExponent(piece, decimalSeparator);
    if (line[i].IsValue && (signFollows || (next == "^" && piece.starts_with('-')))) {
      text += "(" + piece + ")";
      continue;
    }
    text += piece;
    if (signFollows || (!next.empty() && IsWordCharacter(piece.back()) && IsWordCharacter(next[0]))) text += ' ';
  }
  return text;
}

}  // namespace

std::string GenerateTextInfix(const Expression& expression, std::span<const double> Values, const LocaleText& locale,
                              int ReplaceOption, int AppendParameters) {
  std::array<std::vector<Piece>, 10> lines;  // by owner
  for (const SourceToken& token : expression.SourceTokens) {
    std::vector<Piece>& line = lines[static_cast<std::size_t>(token.Owner)];
    if (!token.Text.starts_with('~'))
      line.push_back({token.Text});
    else if (ReplaceOption == 0)
      line.push_back({ValueOf(token.Text.substr(1), expression, Values, locale), true});
    else
      line.push_back({token.Text.substr(1)});
  }

  std::string text = "Y = " + Joined(lines[0], locale.DecimalSeparator);
  for (std::size_t n = 1; n < lines.size(); ++n)
    if (!lines[n].empty())
      text.append(NL) += "F" + std::to_string(n) + " = " + Joined(lines[n], locale.DecimalSeparator);
  if (AppendParameters != 0) {
    text += NL;
    for (const std::string& name : expression.CoefficientNames)
      text.append(NL) += name + " = " + ValueOf(name, expression, Values, locale);
  }
  return text;
}

}  // namespace quorvex
