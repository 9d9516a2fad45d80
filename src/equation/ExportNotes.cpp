#include "equation/ExportNotes.h"

#include <algorithm>
#include <array>

#include "equation/RenderPostfix.h"

namespace quorvex {
namespace {

constexpr const char* kTruth =
    "Comparisons and logic words are used as numbers: true is 1 here and -1 in Quorvex, whose logic works on bits.";
constexpr const char* kRounding = "The operators mod and \\ take fractions as they are; Quorvex rounds them first.";

bool Has(const Expression& expression, TokenKind type, auto matches) {
  return std::ranges::any_of(expression.ExprTokens,
                             [&](const ExprToken& token) { return token.Type == type && matches(token); });
}

bool IsComparison(const ExprToken& token) {
  return token.Type == TokenKind::Binary && token.Code >= kEqual && token.Code <= kGreaterOrEqual;
}
bool IsLogic(const ExprToken& token) {
  return (token.Type == TokenKind::Binary && token.Code >= kAnd) ||
         (token.Type == TokenKind::Unary && token.Code == kNot);
}

// Whether a truth is used as a number, or a number by a logic word as a truth. The condition of an "if" takes either.
bool MixesTruthAndNumbers(const Expression& expression) {
  struct Kind {
    bool IsTruth = false;
  };
  bool mixes = false;
  const Kind result =
      RenderPostfix<Kind>(expression.ExprTokens, [&](const ExprToken& token, std::span<const Kind> from) {
        const bool isIf = token.Type == TokenKind::Function && token.Code == kEndIfCode;
        const bool wantsTruth = IsLogic(token);
        for (std::size_t i = isIf ? 1 : 0; i < from.size(); ++i) mixes |= from[i].IsTruth != wantsTruth;
        return Kind{wantsTruth || IsComparison(token)};
      });
  return mixes || result.IsTruth;
}

bool RoundsOperands(const Expression& expression) {
  return Has(expression, TokenKind::Binary,
             [](const ExprToken& token) { return token.Code == kIntegerDivide || token.Code == kMod; });
}

}  // namespace

std::vector<std::string> CodeNotes(const Expression& expression, ExprType language) {
  std::vector<std::string> notes;
  if (language == ExprType::C) {
    if (MixesTruthAndNumbers(expression)) notes.emplace_back(kTruth);
    if (RoundsOperands(expression)) notes.emplace_back(kRounding);
    return notes;
  }
  for (const char* word : {"arcsec", "arccosec", "arccotan"})
    if (Has(expression, TokenKind::Function, [&](const ExprToken& token) { return token.Name == word; }))
      notes.push_back(std::string("The function ") + word + " has other values here than in Quorvex.");
  return notes;
}

std::vector<std::string> SpreadsheetNotes(const Expression& expression) {
  std::vector<std::string> notes;
  if (Has(expression, TokenKind::Binary,
          [](const ExprToken& token) { return token.Code == kAnd || token.Code == kOr; }))
    notes.emplace_back("Spreadsheets know AND and OR as functions only: change a AND b to AND(a,b) by hand.");
  if (MixesTruthAndNumbers(expression)) notes.emplace_back(kTruth);
  if (RoundsOperands(expression)) notes.emplace_back(kRounding);
  return notes;
}

}  // namespace quorvex
