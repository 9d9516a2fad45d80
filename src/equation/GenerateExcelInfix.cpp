#include "equation/GenerateExcelInfix.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "core/NumberText.h"
#include "equation/DataWordValue.h"
#include "equation/RenderPostfix.h"

namespace quorvex {

const std::string_view kExcelHelp =
    "The clipboard contains the Excel function. \r\n"
    "To use the function in a range of cells: \r\n"
    "1) In Excel, click on the first cell of the range where you want the equation results to appear.\r\n"
    "2) Choose 'Edit - Paste'.\r\n"
    "3) Choose 'Edit - Copy'. This will place the function on the clipboard using relative indexing.\r\n"
    "4) Select the range of additional cells you where want the function results to appear.\r\n"
    "5) Choose 'Edit - Paste'.";

namespace {

constexpr const char* kBadColumn = "Please enter an Excel worksheet column from 'A' to 'IV'.";
constexpr const char* kBadRow = "Please enter an Excel worksheet row from 1 to 65536.";
constexpr const char* kBadReference =
    "Invalid cell referance. The column must be between 'A' and 'IV', and the row must be between 1 and 65536.";
constexpr const char* kUnsupported =
    "The equation you are exporting contains Quorvex intrinsic functions which Excel does not support.";
constexpr const char* kFailed = "An error occurred exporting the Excel function.";

constexpr int kColumns = 256, kRows = 65536;
constexpr std::size_t kLongestCell = 32767;  // characters

// What a word becomes; "#1" to "#3" are its arguments in written order. Words without a row have no counterpart.
struct Form {
  std::string_view Word, Formula;
};

// clang-format off
// Quotients and differences stand in parentheses, so that a/sec(x) divides by all of the secant.
constexpr Form kFunctions[] = {
    {"abs", "ABS(#1)"},
    {"exp", "EXP(#1)"},
    {"fix", "TRUNC(#1)"},
    {"int", "INT(#1)"},
    {"fract", "(#1 - TRUNC(#1))"},
    {"log", "LN(#1)"},
    {"ln", "LN(#1)"},
    {"log10", "LOG10(#1)"},
    {"rnd", "RAND()"},
    {"sgn", "SIGN(#1)"},
    {"sqr", "SQRT(#1)"},
    {"cos", "COS(#1)"},
    {"sin", "SIN(#1)"},
    {"tan", "TAN(#1)"},
    {"arcsin", "ASIN(#1)"},
    {"arccos", "ACOS(#1)"},
    {"arctan", "ATAN(#1)"},
    {"sec", "(1/COS(#1))"},
    {"cosec", "(1/SIN(#1))"},
    {"cotan", "(1/TAN(#1))"},
    {"arcsec", "(ATAN2(SQRT(1-(1/#1)*(1/#1)),-(1/#1))+2*ATAN(1))"},
    {"arccosec", "ATAN2(SQRT(1-(1/#1)*(1/#1)),1/#1)"},
    {"arccotan", "(2*ATAN(1)-ATAN(#1))"},
    {"hsin", "SINH(#1)"},
    {"hcos", "COSH(#1)"},
    {"htan", "TANH(#1)"},
    {"hsec", "(2/(EXP(#1)+EXP(-#1)))"},
    {"hcosec", "(2/(EXP(#1)-EXP(-#1)))"},
    {"hcotan", "((EXP(#1)+EXP(-#1))/(EXP(#1)-EXP(-#1)))"},
    {"harcsin", "ASINH(#1)"},
    {"harccos", "ACOSH(#1)"},
    {"harctan", "ATANH(#1)"},
    {"harcsec", "LN((SQRT(1-#1*#1)+1)/#1)"},
    {"harccosec", "LN((SIGN(#1)*SQRT(#1*#1+1)+1)/#1)"},
    {"harccotan", "(LN((#1+1)/(#1-1))/2)"},
    {"rtod", "DEGREES(#1)"},
    {"dtor", "RADIANS(#1)"},
    {"erf", "ERF(#1)"},
    {"erfc", "ERFC(#1)"},
    {"fact", "FACT(#1)"},
    {"gamma", "EXP(GAMMALN(#1))"},
    {"gammaln", "GAMMALN(#1)"},
    {"if", "IF(#1,#2,#3)"},
    {"igamma", "GAMMADIST(#2,#1,1,TRUE)"},
    {"student", "(1-TDIST(ABS(#1),#2,2))"},  // TDIST takes no negative argument
    {"chi2c", "CHIDIST(#1,#2)"},
    {"jn", "BESSELJ(#2,#1)"},
    {"yn", "BESSELY(#2,#1)"},
    {"in", "BESSELI(#2,#1)"},
    {"kn", "BESSELK(#2,#1)"},
    {"max", "MAX(#1,#2)"},
    {"min", "MIN(#1,#2)"},
    {"mag", "SQRT((#1*#1)+(#2*#2))"},
    {"binomial", "(1-BINOMDIST(#1-1,#2,#3,TRUE))"},  // at least, not at most, #1 successes
    {"ibeta", "BETADIST(#3,#1,#2)"},
    {"fdist", "FDIST(#3,#1,#2)"},
    {"j0", "BESSELJ(#1,0)"},
    {"j1", "BESSELJ(#1,1)"},
    {"y0", "BESSELY(#1,0)"},
    {"y1", "BESSELY(#1,1)"},
    {"i0", "BESSELI(#1,0)"},
    {"i1", "BESSELI(#1,1)"},
    {"k0", "BESSELK(#1,0)"},
    {"k1", "BESSELK(#1,1)"},
};
constexpr Form kOperators[] = {
    {"neg", "-(#1)"},
    {"not", "NOT(#1)"},
    {"^", "(#1 ^ #2)"},
    {"*", "(#1 * #2)"},
    {"/", "(#1 / #2)"},
    {"+", "(#1 + #2)"},
    {"-", "(#1 - #2)"},
    {"\\", "(QUOTIENT(#1,#2))"},
    {"mod", "(MOD(#1,#2))"},
    {"=", "(#1 = #2)"},
    {"<>", "(#1 <> #2)"},
    {"<", "(#1 < #2)"},
    {">", "(#1 > #2)"},
    {"<=", "(#1 <= #2)"},
    {">=", "(#1 >= #2)"},
    {"and", "(#1 AND #2)"},
    {"or", "(#1 OR#2)"},
};
// clang-format on

struct Cell {
  int Column, Row;  // from 1
  bool OnSheet() const { return Column >= 1 && Column <= kColumns && Row >= 1 && Row <= kRows; }
};

// 0 for a text that names no column of the sheet.
int ColumnNumber(std::string_view text) {
  if (text.empty() || text.size() > 2) return 0;
  int number = 0;
  for (char c : text) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 0x20);
    if (c < 'A' || c > 'Z') return 0;
    number = number * 26 + (c - 'A' + 1);
  }
  return number <= kColumns ? number : 0;
}

// 0 for a text that names no row of the sheet.
int RowNumber(std::string_view text) {
  if (text.empty() || text.size() > 5) return 0;
  int number = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') return 0;
    number = number * 10 + (c - '0');
  }
  return number <= kRows ? number : 0;
}

std::string CellText(Cell cell) {
  std::string column(1, static_cast<char>('A' + (cell.Column - 1) % 26));
  if (cell.Column > 26) column.insert(column.begin(), static_cast<char>('A' + (cell.Column - 1) / 26 - 1));
  return column + std::to_string(cell.Row);
}

std::optional<Cell> ReadCell(std::string_view text) {
  const auto split = std::min(text.find_first_of("0123456789"), text.size());
  const Cell cell = {ColumnNumber(text.substr(0, split)), RowNumber(text.substr(split))};
  return cell.OnSheet() ? std::optional(cell) : std::nullopt;
}

class Formula {
 public:
  Formula(std::span<const double> Values, const DataStatistics& statistics, Cell first, bool XInColumns)
      : Values_(Values), statistics_(statistics), first_(first), XInColumns_(XInColumns), bodies_(10) {}

  // Once something has failed, the texts are empty: what is left of the formula does not grow.
  std::string Render(const ExprToken& token, std::span<const std::string> operands) {
    if (failure_) return {};
    std::string text = Text(token, operands);
    if (!failure_ && text.size() > kLongestCell) failure_ = kFailed;
    return failure_ ? std::string() : text;
  }

  const char* Failed() const { return failure_; }

 private:
  std::string Text(const ExprToken& token, std::span<const std::string> operands) {
    switch (token.Type) {
      case TokenKind::IndependentVariable:
        return Variable(token.Code == 0 ? 0 : token.Code - 1);
      case TokenKind::Literal:
        return GeneralNumber(token.Value);
      case TokenKind::Coefficient:
        return GeneralNumber(Values_[static_cast<std::size_t>(token.Index - 1)]);
      case TokenKind::SpecialWord: {
        const auto value = DataWordValue(token, statistics_);
        if (!value) failure_ = kFailed;
        return GeneralNumber(value.value_or(0));
      }
      case TokenKind::SaveSupport:
        return bodies_[static_cast<std::size_t>(token.Code)] = operands[0];
      case TokenKind::RecallSupport:
        return bodies_[static_cast<std::size_t>(token.Code)];
      case TokenKind::Function:
        return Fill(kFunctions, token.Code == kEndIfCode ? "if" : token.Name, operands);
      default:
        return Fill(kOperators, token.Name, operands);
    }
  }

  std::string Variable(int offset) {
    Cell cell = first_;
    (XInColumns_ ? cell.Column : cell.Row) += offset;
    if (!cell.OnSheet()) failure_ = kBadReference;
    return CellText(cell);
  }

  std::string Fill(std::span<const Form> forms, std::string_view word, std::span<const std::string> operands) {
    const auto form = std::ranges::find(forms, word, &Form::Word);
    if (form == forms.end()) {
      failure_ = kUnsupported;
      return {};
    }
    std::string text;
    for (std::size_t i = 0; i < form->Formula.size(); ++i) {
      if (form->Formula[i] == '#')
        text += operands[static_cast<std::size_t>(form->Formula[++i] - '1')];
      else
        text += form->Formula[i];
    }
    return text;
  }

  const std::span<const double> Values_;
  const DataStatistics& statistics_;
  const Cell first_;
  const bool XInColumns_;
  std::vector<std::string> bodies_;  // of F1 to F9
  const char* failure_ = nullptr;
};

}  // namespace

Result<std::string> ExcelCellReference(std::string_view column, std::string_view row) {
  const Cell cell = {ColumnNumber(Trim(column)), RowNumber(Trim(row))};
  if (cell.Column == 0) return Failure{kBadColumn};
  if (cell.Row == 0) return Failure{kBadRow};
  return CellText(cell);
}

Result<std::string> GenerateExcelInfix(const Expression& expression, std::span<const double> Values,
                                       const DataStatistics& statistics, std::string_view CellReferance,
                                       bool XInColumns) {
  const std::optional<Cell> first = ReadCell(CellReferance);
  if (!first) return Failure{kBadReference};
  Formula formula(Values, statistics, *first, XInColumns);
  const std::string text = RenderPostfix<std::string>(
      expression.ExprTokens,
      [&](const ExprToken& token, std::span<const std::string> operands) { return formula.Render(token, operands); });
  if (formula.Failed()) return Failure{formula.Failed()};
  return "=" + text;
}

}  // namespace quorvex
