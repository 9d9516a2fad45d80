#include "code/Formula.h"

#include <algorithm>
#include <map>
#include <set>

#include "code/FillText.h"
#include "code/Markup.h"
#include "core/NumberText.h"
#include "equation/Parser.h"
#include "equation/RenderPostfix.h"
#include "functions/Elementary.h"

namespace quorvex {
namespace {

// Words that are a function with a name of its own; the first operands may be its indices.
struct Named {
  std::string_view Word, Name;
  int Below = 0, Above = 0;  // how many operands
  bool Slope = false;
};
constexpr Named kNamed[] = {
    {"log", "ln"},
    {"ln", "ln"},
    {"sgn", "sgn"},
    {"cos", "cos"},
    {"sin", "sin"},
    {"tan", "tan"},
    {"arcsin", "arcsin"},
    {"arccos", "arccos"},
    {"arctan", "arctan"},
    {"sec", "sec"},
    {"cosec", "csc"},
    {"cotan", "cot"},
    {"arcsec", "arcsec"},
    {"arccosec", "arccsc"},
    {"arccotan", "arccot"},
    {"hsin", "sinh"},
    {"hcos", "cosh"},
    {"htan", "tanh"},
    {"hsec", "sech"},
    {"hcosec", "csch"},
    {"hcotan", "coth"},
    {"harcsin", "arsinh"},
    {"harccos", "arcosh"},
    {"harctan", "artanh"},
    {"harcsec", "arsech"},
    {"harccosec", "arcsch"},
    {"harccotan", "arcoth"},
    {"erf", "erf"},
    {"erfc", "erfc"},
    {"igamma", "P"},
    {"igammac", "Q"},
    {"beta", "B"},
    {"jn", "J", 1},
    {"yn", "Y", 1},
    {"in", "I", 1},
    {"kn", "K", 1},
    {"jnu", "J", 1},
    {"ynu", "Y", 1},
    {"inu", "I", 1},
    {"knu", "K", 1},
    {"djnu", "J", 1, 0, true},
    {"dynu", "Y", 1, 0, true},
    {"dinu", "I", 1, 0, true},
    {"dknu", "K", 1, 0, true},
    {"sphjn", "j", 1},
    {"sphyn", "y", 1},
    {"dsphjn", "j", 1, 0, true},
    {"dsphyn", "y", 1, 0, true},
    {"max", "max"},
    {"min", "min"},
    {"legendre", "P", 1, 1},
    {"airya", "Ai"},
    {"airyb", "Bi"},
    {"dairya", "Ai", 0, 0, true},
    {"dairyb", "Bi", 0, 0, true},
    {"fix", "trunc"},
    {"fract", "frac"},
    {"rnd", "rnd"},
    {"mod", "rem"},
    {"\\", "quot"},
    {"xor", "xor"},
    {"eqv", "eqv"},
    {"imp", "imp"},
    {"and", "and"},
    {"or", "or"},
    {"not", "not"},
};

// Names among them that LaTeX has commands for.
constexpr std::string_view kOperators[] = {"ln",  "cos", "sin",  "tan",  "arcsin", "arccos", "arctan", "sec",
                                           "csc", "cot", "sinh", "cosh", "tanh",   "coth",   "max",    "min"};

// Words that are written by others, in the equation language: a, b and c are the operands.
struct Rewritten {
  std::string_view Word;
  const char* As;
};
constexpr Rewritten kRewritten[] = {
    {"rtod", "180/pi*a"},
    {"dtor", "pi/180*a"},
    {"mag", "sqr(a^2+b^2)"},
    {"gammaln", "ln(gamma(a))"},
    {"factln", "ln(fact(a))"},
    {"poisson", "igammac(a,b)"},
    {"chi2", "igamma(b/2,a/2)"},
    {"chi2c", "igammac(b/2,a/2)"},
    {"student", "ibeta(1/2,b/2,a^2/(b+a^2))"},
    {"fdist", "ibeta(b/2,a/2,b/(b+a*c))"},
    {"binomial", "ibeta(a,b-a+1,c)"},
    {"j0", "jn(0,a)"},
    {"j1", "jn(1,a)"},
    {"y0", "yn(0,a)"},
    {"y1", "yn(1,a)"},
    {"i0", "in(0,a)"},
    {"i1", "in(1,a)"},
    {"k0", "kn(0,a)"},
    {"k1", "kn(1,a)"},
};

// What has no sign of its own, or one that is read in more than one way.
struct Note {
  std::string_view Words;  // with a blank around each
  std::string_view Sentence;
};
constexpr Note kNotes[] = {
    {" ... ", "What is too long to be read stands as dots."},
    {" mod ", "rem(a, b) is the remainder of a divided by b, both rounded to whole numbers, with the sign of a."},
    {" \\ ", "quot(a, b) is the whole quotient of a and b, both rounded to whole numbers, towards 0."},
    {" and or not xor eqv imp ",
     "and, or, not, xor, eqv and imp work on the bits of numbers, rounded to whole ones of 32 bits."},
    {" fix ", "trunc(u) is u without its fraction."},
    {" fract ", "frac(u) is the fraction of u, with its sign."},
    {" rnd ", "rnd(u) is a pseudo-random number from 0 to below 1."},
    {" igamma igammac chi2 chi2c poisson ", "P(a, u) and Q(a, u) are the regularised incomplete gamma functions."},
    {" ibeta student fdist binomial ",
     "I with a number below and two in parentheses is the regularised incomplete beta "
     "function."},
};

// How tightly a part holds together. What is a factor needs parentheses only under a power.
enum class Level { Loose, Truth, Sum, Sign, Product, Factor, Atom };

struct Part {
  std::string Text;
  Level Binds = Level::Atom;
  bool BeginsWithDigit = false;
  bool IsTruth = false;
  std::vector<std::size_t> Signs = {};  // where in Text the terms of a sum begin, but the first
};

// How wide a text is, in characters: without tags and commands, each of which is nothing or one sign, and what groups.
std::size_t Width(std::string_view text) {
  std::size_t width = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '<')
      i = std::min(text.find('>', i), text.size());
    else if (c == '&' && text.find(';', i) != std::string_view::npos)
      i = text.find(';', i), ++width;
    else if (c == '\\')
      while (i + 1 < text.size() && text[i + 1] >= 'a' && text[i + 1] <= 'z') ++i;
    else
      width += std::string_view("{}^_ ").find(c) == std::string_view::npos ? 1 : 0;
  }
  return width;
}

// Of a part, in bytes: a word that is written by others with an operand twice doubles it, each time that it stands
// within itself.
constexpr std::size_t kLongestText = 200'000;

// Of a line, in characters.
constexpr std::size_t kLineWidth = 70;

// `text` as ShortestNumber or GeneralNumber have it.
Part Number(std::string_view text, const Markup& markup) {
  const auto e = text.find('E');
  const bool isNegative = text.starts_with('-');
  if (e == std::string::npos) {
    const std::string magnitude = FillText(markup.Number, {text.substr(isNegative ? 1 : 0)});
    return isNegative ? Part{FillText(markup.Negative, {magnitude}), Level::Sign} : Part{magnitude, Level::Atom, true};
  }
  std::string_view exponent = text.substr(e + 1);
  const bool isSmall = exponent.starts_with('-');
  exponent.remove_prefix(std::min(exponent.find_first_of("123456789"), exponent.size()));
  const std::string digits = FillText(markup.Number, {exponent});
  const std::string whole = FillText(markup.TimesTenTo, {text.substr(isNegative ? 1 : 0, e - (isNegative ? 1 : 0)),
                                                         isSmall ? FillText(markup.Negative, {digits}) : digits});
  return isNegative ? Part{FillText(markup.Negative, {whole}), Level::Sign} : Part{whole, Level::Product, true};
}

class Typesetter {
 public:
  Typesetter(const CodeModel& model, const Markup& markup) : model_(model), markup_(markup) {
    for (int v = 1; v <= model.Variables; ++v) Take(model.Variables == 1 ? "x" : "x" + std::to_string(v));
    for (int n = 1; n <= 9; ++n) Take("F" + std::to_string(n));
    Take("y");
    for (const std::string& name : model.Compiled.CoefficientNames) coefficients_.push_back(Take(name));
  }

  const std::vector<std::string>& Coefficients() const { return coefficients_; }
  const std::set<std::string>& Words() const { return words_; }

  std::string Formula() {
    const Part whole = AsNumber(
        RenderPostfix<Part>(model_.Compiled.ExprTokens, [&](const ExprToken& token, std::span<const Part> operands) {
          return Bounded(Render(token, operands, coefficients_));
        }));
    std::string lines = Lines(Name("y"), whole);
    for (const auto& support : supports_)
      lines.append(markup_.LineEnd).append(Lines(Name("F" + std::to_string(support.first)), support.second));
    return FillText(markup_.Whole, {lines});
  }

 private:
  // A sum too wide for a line goes on ahead of a sign.
  std::string Lines(std::string_view name, const Part& part) const {
    std::string lines;
    std::size_t begin = 0;
    const auto end = [&](std::size_t at) {
      const std::string_view terms = std::string_view(part.Text).substr(begin, at - begin);
      lines += begin == 0 ? FillText(markup_.Line, {name, terms})
                          : std::string(markup_.LineEnd) + FillText(markup_.Further, {terms});
      begin = at;
    };
    for (std::size_t i = 0; i < part.Signs.size(); ++i) {
      const std::size_t next = i + 1 < part.Signs.size() ? part.Signs[i + 1] : part.Text.size();
      if (Width(std::string_view(part.Text).substr(begin, next - begin)) > kLineWidth) end(part.Signs[i]);
    }
    end(part.Text.size());
    return lines;
  }

  std::string Upright(std::string_view name) const {
    std::string text;
    for (const char c : name) text.append(c == '_' ? markup_.Underscore : std::string_view(&c, 1));
    return FillText(markup_.Upright, {text});
  }

  // Letters: a Greek one by its name, a single one slanted, a word upright.
  std::string Letters(std::string_view name) const {
    const auto greek = std::ranges::find(kGreekLetters, name);
    if (greek != kGreekLetters.end() && !name.empty())
      return markup_.Greek(static_cast<std::size_t>(greek - kGreekLetters.begin()));
    if (name.find_first_not_of("0123456789") == std::string_view::npos) return FillText(markup_.Number, {name});
    return name.size() == 1 ? FillText(markup_.Italic, {name}) : Upright(name);
  }

  // Digits at the end of letters, and what follows "_", stand below.
  std::string Name(std::string_view name) const {
    const auto line = name.find('_');
    const bool hasLine = line != std::string_view::npos && line > 0 && line + 1 < name.size();
    const auto stem = name.substr(0, hasLine ? line : name.find_last_not_of("0123456789") + 1);
    const auto below = name.substr(stem.size() + (hasLine ? 1 : 0));
    const bool isPlain = stem.find_first_of("0123456789_") == std::string_view::npos && !stem.empty() &&
                         below.find('_') == std::string_view::npos;
    if (!isPlain) return Upright(name);
    return below.empty() ? Letters(stem) : FillText(markup_.Subscript, {Letters(stem), Letters(below)});
  }

  // Two names that would look alike, such as a1 and a_1, stand as they are written.
  std::string Take(const std::string& name) {
    std::string text = Name(name);
    return taken_.insert(text).second ? text : Upright(name);
  }

  std::string Enclose(const Part& part, Level least) const {
    return part.Binds >= least ? part.Text : FillText(markup_.Parentheses, {part.Text});
  }

  Part AsNumber(const Part& part) const {
    if (!part.IsTruth) return part;
    return {FillText(markup_.AsNumber, {part.Text}), Level::Sign};
  }
  std::string AsTruth(const Part& part) const {
    return part.IsTruth ? part.Text
                        : FillText(markup_.Comparisons[3], {Enclose(part, Level::Sum), Number("0", markup_).Text});
  }

  Part Bounded(Part part) {
    if (part.Text.size() <= kLongestText) return part;
    words_.insert("...");
    return {FillText(markup_.Number, {"..."})};
  }
  Part Render(const ExprToken& token, std::span<const Part> operands, std::span<const std::string> coefficients);
  Part Operator(const ExprToken& token, std::span<const Part> operands);
  Part Function(const std::string& word, std::span<const Part> operands);
  Part Logic(std::string_view sign, std::span<const Part> operands) const;

  const CodeModel& model_;
  const Markup& markup_;
  std::vector<std::string> coefficients_;
  std::set<std::string> taken_, words_;
  std::map<int, Part> supports_;
};

Part Typesetter::Render(const ExprToken& token, std::span<const Part> operands,
                        std::span<const std::string> coefficients) {
  switch (token.Type) {
    case TokenKind::IndependentVariable:
      return {Name(token.Code == 0 ? "x" : "x" + std::to_string(token.Code))};
    case TokenKind::Literal:
      if (token.Value == kPi) return {markup_.Greek(kGreekPi)};
      return Number(ShortestNumber(token.Value), markup_);
    case TokenKind::Coefficient:
      return {coefficients[static_cast<std::size_t>(token.Index - 1)]};
    case TokenKind::SpecialWord:
      return {Upright(token.Name)};
    case TokenKind::SaveSupport:
      supports_[token.Code] = AsNumber(operands[0]);
      [[fallthrough]];
    case TokenKind::RecallSupport:
      return {Name("F" + std::to_string(token.Code))};
    case TokenKind::Function:
      if (token.Code == kEndIfCode)
        return {FillText(markup_.Cases, {AsTruth(operands[0]), AsNumber(operands[1]).Text, AsNumber(operands[2]).Text}),
                Level::Loose};
      return Function(ToLower(token.Name), operands);
    default:
      return Operator(token, operands);
  }
}

Part Typesetter::Logic(std::string_view sign, std::span<const Part> operands) const {
  const auto enclosed = [&](std::size_t i) { return Enclose(operands[i], Level::Truth); };
  return {operands.size() == 1 ? FillText(sign, {enclosed(0)}) : FillText(sign, {enclosed(0), enclosed(1)}),
          Level::Loose, false, true};
}

Part Typesetter::Operator(const ExprToken& token, std::span<const Part> operands) {
  const bool isUnary = token.Type == TokenKind::Unary;
  const bool areTruths = std::ranges::all_of(operands, &Part::IsTruth);
  if (isUnary) {
    if (token.Code == kNegate)
      return {FillText(markup_.Negative, {Enclose(AsNumber(operands[0]), Level::Product)}), Level::Sign};
    if (areTruths)
      return {FillText(markup_.Not, {FillText(markup_.Parentheses, {operands[0].Text})}), Level::Truth, false, true};
    return Function("not", operands);
  }
  if (areTruths && token.Code == kAnd) return Logic(markup_.And, operands);
  if (areTruths && token.Code == kOr) return Logic(markup_.Or, operands);
  const Part a = AsNumber(operands[0]), b = AsNumber(operands[1]);
  switch (token.Code) {
    case kPower:
      return {FillText(markup_.Power, {Enclose(a, Level::Atom), b.Text}), Level::Factor, a.BeginsWithDigit};
    case kAdd:
    case kSubtract: {
      const std::string left = Enclose(a, Level::Sum), right = Enclose(b, Level::Product);
      Part sum{FillText(token.Code == kAdd ? markup_.Sum : markup_.Difference, {left, right}), Level::Sum,
               a.BeginsWithDigit};
      if (a.Binds == Level::Sum) sum.Signs = a.Signs;
      sum.Signs.push_back(left.size());
      return sum;
    }
    case kMultiply:
      return {FillText(b.BeginsWithDigit ? markup_.Dot : markup_.Product,
                       {Enclose(a, Level::Sign), Enclose(b, Level::Product)}),
              a.Binds == Level::Sign ? Level::Sign : Level::Product, a.BeginsWithDigit && a.Binds >= Level::Sign};
    case kDivide:
      return {FillText(markup_.Fraction, {a.Text, b.Text}), Level::Factor};
    case kEqual:
    case kLess:
    case kGreater:
    case kUnequal:
    case kLessOrEqual:
    case kGreaterOrEqual:
      return {FillText(markup_.Comparisons[static_cast<std::size_t>(token.Code - kEqual)],
                       {Enclose(a, Level::Sum), Enclose(b, Level::Sum)}),
              Level::Truth, false, true};
    default:
      return Function(ToLower(token.Name), operands);
  }
}

Part Typesetter::Function(const std::string& word, std::span<const Part> operands) {
  words_.insert(word);
  std::vector<Part> numbers;
  for (const Part& operand : operands) numbers.push_back(AsNumber(operand));
  const auto text = [&](std::size_t i) -> const std::string& { return numbers[i].Text; };
  if (word == "abs") return {FillText(markup_.Bars, {text(0)})};
  if (word == "int" || word == "floor") return {FillText(markup_.Floor, {text(0)})};
  if (word == "ceil") return {FillText(markup_.Ceiling, {text(0)})};
  if (word == "sqr") return {FillText(markup_.Root, {text(0)}), Level::Factor};
  if (word == "exp") return {FillText(markup_.Power, {Upright("e"), text(0)}), Level::Factor};
  if (word == "fact") return {FillText(markup_.Factorial, {Enclose(numbers[0], Level::Atom)}), Level::Factor};
  const auto apply = [&](const std::string& head, std::size_t first) {
    std::string all = text(first);
    for (std::size_t i = first + 1; i < numbers.size(); ++i) all = FillText(markup_.Comma, {all, text(i)});
    return Part{FillText(markup_.Apply, {head, all}), Level::Factor};
  };
  if (word == "log10")
    return apply(FillText(markup_.Subscript, {FillText(markup_.Operator, {"log"}), FillText(markup_.Number, {"10"})}),
                 0);
  if (word == "gamma") return apply(std::string(markup_.Gamma), 0);
  if (word == "psi") return apply(markup_.Greek(23), 0);
  if (word == "ibeta") {
    const std::string both = FillText(markup_.Comma, {text(0), text(1)});
    return {FillText(markup_.Apply, {FillText(markup_.Subscript, {Upright("I"), text(2)}), both}), Level::Factor};
  }
  const auto* rewritten = std::ranges::find(kRewritten, word, &Rewritten::Word);
  if (rewritten != std::end(kRewritten)) {
    const Expression other = Parser(Dialect::OneVariable, {}).Compile({rewritten->As});
    return RenderPostfix<Part>(other.ExprTokens, [&](const ExprToken& token, std::span<const Part> parts) {
      if (token.Type == TokenKind::Coefficient) return numbers[static_cast<std::size_t>(token.Index - 1)];
      return Render(token, parts, {});
    });
  }
  const auto* named = std::ranges::find(kNamed, word, &Named::Word);
  if (named == std::end(kNamed)) return apply(Upright(word), 0);
  const bool isKnown = std::ranges::find(kOperators, named->Name) != std::end(kOperators);
  std::string head = FillText(isKnown ? markup_.Operator : markup_.Upright, {named->Name});
  const std::string above = named->Above > 0 ? text(1) : named->Slope ? std::string(markup_.PrimeSign) : "";
  if (named->Below > 0)
    head =
        above.empty() ? FillText(markup_.Subscript, {head, text(0)}) : FillText(markup_.Both, {head, text(0), above});
  else if (!above.empty())
    head = FillText(markup_.Power, {head, above});
  return apply(head, static_cast<std::size_t>(named->Below + named->Above));
}

}  // namespace

std::string LatexFormula(const CodeModel& model) { return Typesetter(model, kLatexMarkup).Formula(); }
std::string MathMLFormula(const CodeModel& model) { return Typesetter(model, kMathMLMarkup).Formula(); }

std::vector<std::string> FormulaNotes(const CodeModel& model) {
  Typesetter typesetter(model, kMathMLMarkup);
  static_cast<void>(typesetter.Formula());
  std::vector<std::string> notes;
  for (const Note& note : kNotes) {
    const auto speaksOf = [&](const std::string& word) {
      return note.Words.find(" " + word + " ") != std::string_view::npos;
    };
    if (std::ranges::any_of(typesetter.Words(), speaksOf)) notes.emplace_back(note.Sentence);
  }
  return notes;
}

std::vector<std::string> LatexCoefficients(const CodeModel& model) {
  return Typesetter(model, kLatexMarkup).Coefficients();
}
std::string LatexNumber(double value) { return Number(GeneralNumber(value), kLatexMarkup).Text; }

}  // namespace quorvex
