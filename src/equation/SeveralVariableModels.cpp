#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "equation/CatalogueRows.h"
#include "equation/NonlinearForms.h"

namespace quorvex {

namespace {

// What the terms of a variable are powers of, in the order of the catalogue.
constexpr Factor kFamilies[] = {{XFunction::X, 1}, {XFunction::Ln, 1}, {XFunction::X, -1}};

Factor PowerOf(const Factor& family, int variable, int power) {
  return {family.Function, family.Power * power, variable};
}

std::string FactorText(const Factor& factor) {
  return PowerText(factor.Function, static_cast<int>(factor.Power), "x" + std::to_string(factor.Variable + 1));
}

// ---- polynomials of two variables

constexpr int kMostDegree = 5;

CatalogueModel TwoVariablePolynomial(const std::array<Factor, 2>& family, const std::array<int, 2>& degree) {
  static constexpr std::array<const char*, 9> kCounts = {"Three", "Four", "Five", "Six",   "Seven",
                                                         "Eight", "Nine", "Ten",  "Eleven"};
  CatalogueModel model;
  model.NumVariables = 2;
  model.Group = kCounts[static_cast<std::size_t>(degree[0] + degree[1] - 2)] + std::string(" Parameter Polynomial");
  model.Description = model.Group;
  std::vector<NestedRun> runs;
  model.ID = "a";
  for (int v = 0, offset = 0; v < 2; offset += degree[static_cast<std::size_t>(v++)]) {
    const Factor& base = family[static_cast<std::size_t>(v)];
    const int last = degree[static_cast<std::size_t>(v)];
    for (int k = 1; k <= last; ++k)
      model.ID += std::string("+") + CoefficientLetter(offset + k) + FactorText(PowerOf(base, v, k));
    runs.push_back({PowerOf(base, v, 1), last, offset, 1});
  }
  model.Definition = model.ID;
  MakeNested(model, 0, std::move(runs));
  return model;
}

void AddTwoVariablePolynomials(std::vector<CatalogueModel>& models) {
  // Four combinations that the catalogue has never had.
  static constexpr std::array<std::string_view, 4> kMissing = {
      "a+b*ln(x1)+c*ln(x1)^2+d*ln(x1)^3+e*ln(x1)^4+f*ln(x2)", "a+b/x1+c/x1^2+d/x1^3+e/x1^4+f*x2",
      "a+b/x1+c/x1^2+d/x1^3+e/x1^4+f*x2+g*x2^2", "a+b/x1+c/x1^2+d*x2+e*x2^2+f*x2^3+g*x2^4+h*x2^5"};
  int number = 1;
  for (int total = 2; total <= 2 * kMostDegree; ++total) {
    for (const Factor& first : kFamilies) {
      for (int degree = std::max(1, total - kMostDegree); degree <= std::min(kMostDegree, total - 1); ++degree) {
        for (const Factor& second : kFamilies) {
          CatalogueModel model = TwoVariablePolynomial({first, second}, {degree, total - degree});
          if (std::find(kMissing.begin(), kMissing.end(), model.ID) != kMissing.end()) continue;
          model.IDIndex = number++;
          models.push_back(std::move(model));
        }
      }
    }
  }
  // One model bears the number of the third behind it, and those three each the one before; files hold these numbers.
  const auto odd = std::find_if(models.begin(), models.end(), [](const CatalogueModel& model) {
    return model.ID == "a+b/x1+c/x1^2+d*x2+e*x2^2+f*x2^3";
  });
  odd->IDIndex += 3;
  for (auto next = odd + 1; next != odd + 4; ++next) --next->IDIndex;
}

// ---- Taylor series of two variables

// "*x1*x2", "*x2/x1", "/(x1*x2)": the numerators, then the denominators under one bar.
std::string ProductText(std::span<const Factor> factors) {
  std::string above, below;
  int belowCount = 0;
  for (const Factor& factor : factors) {
    const std::string text = FactorText(factor);
    if (factor.Power > 0) above += text;
    if (factor.Power < 0) below += (belowCount++ ? "*" : "") + text.substr(1);
  }
  if (belowCount > 1) below = "(" + below + ")";
  return above + (below.empty() ? "" : "/" + below);
}

CatalogueModel TaylorSeries(int number, const Factor& first, const Factor& second, std::size_t count) {
  // Powers of the two variables' terms, coefficient by coefficient.
  static constexpr std::array<std::array<int, 2>, 10> kPowers = {
      {{0, 0}, {1, 0}, {0, 1}, {2, 0}, {0, 2}, {1, 1}, {3, 0}, {0, 3}, {1, 2}, {2, 1}}};
  CatalogueModel model;
  model.IDIndex = number;
  model.NumVariables = 2;
  model.NumCoefficients = static_cast<int>(count);
  model.Group = std::string(count == 6 ? "Six" : "Ten") + " Parameter Taylor Series Polynomial";
  model.Description = model.Group;
  for (std::size_t j = 0; j < count; ++j) {
    const auto [p, q] = kPowers[j];
    const Factor u = PowerOf(first, 0, p), w = PowerOf(second, 1, q);
    const Term term = p > 0 && q > 0 ? Term(u, w) : p > 0 ? Term(u) : q > 0 ? Term(w) : Term();
    if (j > 0) model.ID += '+';
    model.ID += CoefficientLetter(static_cast<int>(j)) + ProductText(term.Factors());
    model.Basis.push_back(term);
  }
  model.Definition = model.ID;
  return model;
}

// ---- powers of two variables

template <class Form>
CatalogueModel PowerModel(int number, const char* id, XFunction first, XFunction second, Restoration restore) {
  CatalogueModel model;
  model.IDIndex = number;
  model.NumVariables = 2;
  model.NumCoefficients = Form::kCoefficients;
  model.ID = model.Definition = id;
  model.Group = model.Description = "Three Parameter Power";
  model.Shape = ModelShape::ClosedForm;
  model.Form = &forms::kClosedForm<Form>;
  model.Basis = {Term(), Factor{first, 1, 0}, Factor{second, 1, 1}};
  model.Transform = YTransform::Ln;
  model.Restore = restore;
  return model;
}

}  // namespace

std::vector<CatalogueModel> TwoVariableModels() {
  using enum XFunction;
  std::vector<CatalogueModel> models;
  models.reserve(242);
  models.push_back(PowerModel<forms::TwoPowers>(268, "a*x1^b*x2^c", Ln, Ln, Restoration::Exp1));
  models.push_back(PowerModel<forms::PowerOfX1TimesXOfX2>(269, "a*b^x1*x2^c", X, Ln, Restoration::Exp1Exp2));
  models.push_back(PowerModel<forms::XOfX1TimesPowerOfX2>(270, "a*x1^b*c^x2", Ln, X, Restoration::Exp1Exp3));
  AddTwoVariablePolynomials(models);
  int number = 250;
  for (const std::size_t count : {6u, 10u})
    for (const Factor& second : kFamilies)
      for (const Factor& first : kFamilies) models.push_back(TaylorSeries(number++, first, second, count));
  return models;
}

std::vector<CatalogueModel> ManyVariableModels(int n) {
  CatalogueModel sum;
  sum.NumVariables = sum.NumCoefficients = n;
  sum.IDIndex = n <= 10 ? 100 * n : 1003 + 3 * (n - 11);
  for (int v = 0; v < n; ++v) {
    const Factor x{XFunction::X, 1, v};
    if (v > 0) sum.ID += '+';
    sum.ID += CoefficientLetter(v) + FactorText(x);
    sum.Basis.push_back(x);
  }
  sum.Definition = sum.ID;
  sum.Group = sum.Description = std::to_string(n) + " Parameter Polynomial";

  CatalogueModel withConstant = sum;
  ++withConstant.IDIndex;
  ++withConstant.NumCoefficients;
  withConstant.ID += std::string("+") + CoefficientLetter(n);
  withConstant.Definition = withConstant.ID;
  withConstant.Basis.emplace_back();
  withConstant.Group = withConstant.Description = std::to_string(n + 1) + " Parameter Polynomial";

  CatalogueModel exponential = withConstant;
  ++exponential.IDIndex;
  exponential.ID = exponential.Definition = "exp(" + withConstant.ID + ")";
  exponential.Description = std::to_string(n + 1) + " Parameter Exponential Polynomial";
  exponential.Outer = OuterFunction::Exp;
  exponential.Transform = YTransform::Ln;
  return {std::move(sum), std::move(withConstant), std::move(exponential)};
}

}  // namespace quorvex
