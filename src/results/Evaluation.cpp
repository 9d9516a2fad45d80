#include "results/Evaluation.h"

#include <cmath>

#include "core/Files.h"
#include "core/NumberText.h"
#include "core/NumericFault.h"

namespace quorvex {
namespace {

constexpr const char* kResult = "0.000000000000E+00";
constexpr int kDefaultIntervals = 200;
constexpr int kMostIntervals = 1'000'000;  // some seconds of search

// The entries as numbers; X of the variable that a search varies is of no account.
struct Numbers {
  std::vector<double> X;
  double Y = 0, SearchMin = 0, SearchMax = 0;
  int SearchIntervals = 0;
};

class Evaluation {
 public:
  Evaluation(const SolvedItem& solution, const EvaluationEntries& entries, const LocaleText& locale,
             const SolveData& data)
      : solution_(solution),
        entries_(entries),
        locale_(locale),
        data_(data),
        several_(solution.NumIndependentVar() > 1) {}

  Result<Numbers> Read() const {
    Numbers numbers;
    for (int v = 1; v <= solution_.NumIndependentVar(); ++v) {
      const auto x = Typed(entries_.X[static_cast<std::size_t>(v - 1)]);
      if (!x && !Varies(v)) return Failure{"Please enter a value for " + Name(v) + "."};
      numbers.X.push_back(x.value_or(0));
    }
    if (!entries_.RootAtY) return numbers;
    const auto y = Typed(entries_.Y), min = Typed(entries_.SearchMin), max = Typed(entries_.SearchMax),
               intervals = Typed(entries_.SearchIntervals);
    if (!y) return Failure{"Please enter a value for Y."};
    if (!min) return Failure{"Please enter a value for the search minimum."};
    if (!max) return Failure{"Please enter a value for the search maximum."};
    if (*min == *max) return Failure{"The values entered for search minimum and maximum cannot be equal."};
    if (!intervals || !(*intervals >= 1 && *intervals <= kMostIntervals))
      return Failure{"The number of search intervals must be between 1 and " + std::to_string(kMostIntervals) + "."};
    numbers.Y = *y;
    numbers.SearchMin = *min;
    numbers.SearchMax = *max;
    numbers.SearchIntervals = static_cast<int>(*intervals);
    return numbers;
  }

  std::string ValueAt(const std::vector<double>& x) {
    Line("Evaluation of equation: " + solution_.Name());
    for (int v = 1; v <= solution_.NumIndependentVar(); ++v) Line(Name(v) + " = " + Shown(x, v));
    double y = 0;
    std::string ErrString;
    if (solution_.Evaluate(x, y, ErrString)) {
      Line("Y = " + Pattern(y));
      Limits(x);
    } else {
      Line("Error");
      Line(ErrString);
    }
    Derivatives(x);
    return text_;
  }

  std::string RootsAt(const Numbers& numbers) {
    const int varying = several_ ? entries_.Variable : 1;
    Line("Root search of equation: " + solution_.Name());
    for (int v = 1; v <= solution_.NumIndependentVar(); ++v)
      if (!Varies(v)) Line(Name(v) + " = " + Shown(numbers.X, v));
    Line(Name(varying) + " at Y = " + LocalizeExpression(GeneralNumber(numbers.Y), locale_));
    const std::vector<double> roots = solution_.Model
                                          ? solution_.Model->GetRoots(numbers.SearchMin, numbers.SearchMax, numbers.Y,
                                                                      numbers.SearchIntervals, numbers.X, varying)
                                          : solution_.Interpolation->GetRoots(numbers.SearchMin, numbers.SearchMax,
                                                                              numbers.Y, numbers.SearchIntervals);
    for (const double root : roots) Line(Pattern(root));
    if (roots.empty()) Line("No roots found.");
    for (const double root : roots) {
      std::vector<double> x = numbers.X;
      x[static_cast<std::size_t>(varying - 1)] = root;
      Derivatives(x);
    }
    return text_;
  }

 private:
  bool Varies(int variable) const { return entries_.RootAtY && (!several_ || variable == entries_.Variable); }
  std::string Name(int variable) const { return several_ ? "X" + std::to_string(variable) : "X"; }

  std::optional<double> Typed(const std::string& text) const { return NumericText(text, locale_.DecimalSeparator); }
  std::string Shown(const std::vector<double>& x, int variable) const {
    return LocalizeExpression(GeneralNumber(x[static_cast<std::size_t>(variable - 1)]), locale_);
  }
  std::string Pattern(double value) const { return LocalizeExpression(FormatNumber(value, kResult), locale_); }

  void Line(const std::string& line) {
    if (!text_.empty()) text_ += NL;
    text_ += line;
  }

  void Limits(const std::vector<double>& x) {
    const LimitsChoice& choice = entries_.Limits;
    if (!choice.Any()) return;
    const Result<Bands> bands = BandsOf(solution_, data_, choice.DerivativeMethod);
    if (!bands) return Line(bands.error());
    for (const BandKind kind : choice.Kinds()) {
      const Interval limits = bands->Limits(kind, choice.Level, *solution_.Model, x);
      const std::string name = BandName(kind, choice.Level) + " limits";
      if (std::isnan(limits.Lower))
        Line("There are no " + name + ", since the model has no derivative here.");
      else
        Line(name + ": " + Pattern(limits.Lower) + " to " + Pattern(limits.Upper));
    }
  }

  void Derivatives(const std::vector<double>& x) {
    if (solution_.Model == nullptr || (!entries_.DyDx && !entries_.Parameters)) return;
    std::string heading = "Derivatives at X";
    if (!several_) {
      heading += " = " + Shown(x, 1);
    } else {
      for (int v = 1; v <= solution_.NumIndependentVar(); ++v)
        heading += (v == 1 ? "1 = " : ", " + Name(v) + " = ") + Shown(x, v);
    }
    Line(heading);
    if (entries_.DyDx)
      for (int v = 1; v <= solution_.NumIndependentVar(); ++v) AlongVariable(x, v);
    if (entries_.Parameters) AlongParameters(x);
  }

  void AlongVariable(const std::vector<double>& x, int variable) {
    try {
      Line("dY/d" + Name(variable) + " = " + Pattern(solution_.Model->DDX(x, variable)));
    } catch (const NumericFault&) {
      Line("Error calculating dY/d" + Name(variable));
    }
  }

  void AlongParameters(const std::vector<double>& x) {
    ModelClass& model = *solution_.Model;
    const int n = model.NumDependentVar();
    std::vector<double> values, dyda(static_cast<std::size_t>(n));
    for (int i = 1; i <= n; ++i) values.push_back(model.Values(i));
    std::string ErrString;
    const bool ok = model.Derivative(x, dyda, ErrString);
    for (int i = 1; i <= n; ++i) {
      const std::size_t at = static_cast<std::size_t>(i - 1);
      model.SetValue(i, values[at]);  // an attempt that fails leaves them elsewhere
      if (ok)
        Line("dY/d" + model.Variables(i) + " = " + Pattern(dyda[at]) +
             (model.Constants(i) == 0 ? "  (Held Constant)" : ""));
      else
        Line("Error calculating dY/d" + model.Variables(i));
    }
  }

  const SolvedItem& solution_;
  const EvaluationEntries& entries_;
  const LocaleText& locale_;
  const SolveData& data_;
  const bool several_;
  std::string text_;
};

}  // namespace

SearchDefaults DefaultSearch(const SolvedItem& solution, int variable, const LocaleText& locale) {
  const auto [min, max] = solution.InputRange(variable);
  return {LocalizeExpression(GeneralNumber(min), locale), LocalizeExpression(GeneralNumber(max), locale),
          std::to_string(kDefaultIntervals)};
}

std::optional<std::string> EvalCommand(const SolvedItem& solution, const EvaluationEntries& entries,
                                       const LocaleText& locale, Prompter& user, const SolveData& data) {
  Evaluation evaluation(solution, entries, locale, data);
  const Result<Numbers> numbers = evaluation.Read();
  if (!numbers) {
    user.Refuse(numbers.error());
    return std::nullopt;
  }
  return entries.RootAtY ? evaluation.RootsAt(*numbers) : evaluation.ValueAt(numbers->X);
}

}  // namespace quorvex
