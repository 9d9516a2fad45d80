#include <algorithm>
#include <array>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "equation/CatalogueRows.h"
#include "equation/NonlinearForms.h"

namespace quorvex {

namespace {

using enum XFunction;

constexpr Factor kX{X}, kXInverse{X, -1}, kLn{Ln}, kLnInverse{Ln, -1};
constexpr Term kOne, kMinusOne(-1), kTermX(kX), kMinusX(kX, -1), kSquare({X, 2}), kMinusSquare({X, 2}, -1);
constexpr Term kReciprocal(kXInverse), kLnX(kLn), kLnOnePlusX({LnOnePlus}), kLnOneMinusX({LnOneMinus});
constexpr Term kCosine({Cos}), kSine({Sin});

// "a+b/x+c/x^2"
std::string AscendingText(const Factor& base, int degree) {
  std::string text = "a";
  for (int k = 1; k <= degree; ++k)
    text += std::string("+") + CoefficientLetter(k) + PowerText(base.Function, base.Power > 0 ? k : -k, "x");
  return text;
}

// "a*x^2+b*x+c"
std::string DescendingText(int degree) {
  std::string text;
  for (int k = degree; k >= 1; --k) text += CoefficientLetter(degree - k) + PowerText(X, k, "x") + '+';
  return text + CoefficientLetter(degree);
}

// The four families of nested models in x, ln(x), 1/x and 1/ln(x).
void AddNestedFamilies(std::vector<CatalogueModel>& models) {
  static constexpr std::array<const char*, 10> kOrders = {"First", "Second",  "Third",  "Fourth", "Fifth",
                                                          "Sixth", "Seventh", "Eighth", "Ninth",  "Tenth"};
  for (int degree = 1; degree <= 10; ++degree) {
    const std::string order = kOrders[static_cast<std::size_t>(degree - 1)];
    CatalogueModel model;
    model.IDIndex = degree;
    model.Definition = DescendingText(degree);
    model.ID = degree <= 5 ? model.Definition : order + " order polynomial";
    model.Description = order + " Order Polynomial";
    model.Group = "Polynomial";
    MakeNested(model, degree, {{kX, degree, degree, -1}});
    models.push_back(std::move(model));
  }
  struct Family {
    const char* Group;
    const char* IDEnd;
    const char* DescriptionEnd;
    Factor Base;
    int NumberBefore;
  };
  const Family families[] = {
      {"Logarithm Polynomial", " order logarithm", " Order Logarithm", kLn, 79},
      {"Inverse Polynomial", " order inverse polynomial", " Order Inverse Polynomial", kXInverse, 59},
      {"Inverse Logarithm Polynomial", " order inverse logarithm", " Order Inverse Logarithm", kLnInverse, 69}};
  for (const Family& family : families) {
    for (int degree = 1; degree <= 5; ++degree) {
      const std::string order = kOrders[static_cast<std::size_t>(degree - 1)];
      CatalogueModel model;
      model.IDIndex = family.NumberBefore + degree;
      model.ID = order + family.IDEnd;
      model.Definition = AscendingText(family.Base, degree);
      model.Description = order + family.DescriptionEnd;
      if (model.IDIndex == 60) model.Description += " (Hyperbolic)";
      model.Group = family.Group;
      MakeNested(model, 0, {{family.Base, degree, 0, 1}});
      models.push_back(std::move(model));
    }
  }
}

// ---- the groups of curves, row by row

struct Row {
  int IDIndex;
  const char* ID;
  const char* Description;
  std::vector<Term> Basis;
  YTransform Transform;
  Restoration Restore;
  const ClosedForm* Form;  // null for the outer function of a sum
  int NumCoefficients;
  OuterFunction Outer;
};

template <class Model>
Row Closed(int number, const char* id, const char* description, std::vector<Term> basis, YTransform transform,
           Restoration restore = Restoration::None) {
  return {number,
          id,
          description,
          std::move(basis),
          transform,
          restore,
          &forms::kClosedForm<Model>,
          Model::kCoefficients,
          OuterFunction::None};
}

// The sum of the basis terms within an outer function, whose inverse is the transform of Y.
Row Sum(int number, const char* id, const char* description, std::vector<Term> basis,
        OuterFunction outer = OuterFunction::None) {
  const auto transform = outer == OuterFunction::Exp          ? YTransform::Ln
                         : outer == OuterFunction::Ln         ? YTransform::Exp
                         : outer == OuterFunction::Reciprocal ? YTransform::Reciprocal
                                                              : YTransform::None;
  const int count = static_cast<int>(basis.size());
  return {number, id, description, std::move(basis), transform, Restoration::None, nullptr, count, outer};
}

void AddGroup(std::vector<CatalogueModel>& models, const char* group, std::initializer_list<Row> rows) {
  for (const Row& row : rows) {
    CatalogueModel model;
    model.IDIndex = row.IDIndex;
    model.ID = model.Definition = row.ID;
    model.Description = row.Description;
    model.Group = group;
    model.NumCoefficients = row.NumCoefficients;
    model.Shape = row.Form ? ModelShape::ClosedForm : ModelShape::Sum;
    model.Outer = row.Outer;
    model.Basis = row.Basis;
    model.Form = row.Form;
    model.Transform = row.Transform;
    model.Restore = row.Restore;
    models.push_back(std::move(model));
  }
}

void AddConvexCurves(std::vector<CatalogueModel>& models) {
  using enum YTransform;
  using R = Restoration;
  using YT = YTransform;
  AddGroup(models, "Single Parameter Convex/Concave Curves",
           {Closed<forms::ShiftedLn>(13, "ln(x-a)", "", {kMinusOne}, ExpMinusX),
            Closed<forms::ReciprocalOfOnePlusAX>(11, "1/(1+a*x)", "", {kTermX}, ReciprocalMinusOne),
            Closed<forms::ShiftedExp>(12, "exp(x-a)", "", {kMinusOne}, LnMinusX),
            Closed<forms::XToA>(15, "x^a", "", {kLnX}, YT::Ln),
            Closed<forms::Root>(16, "a^(1/x)", "Root Model", {kReciprocal}, YT::Ln, R::Exp1),
            Closed<forms::ShiftedReciprocal>(14, "1/(x+a)", "", {kOne}, ReciprocalMinusX),
            Closed<forms::OneMinusReciprocalPower>(17, "1-1/(x^a)", "", {kLnX}, LnReciprocalOneMinus)});
  AddGroup(models, "Two Parameter Convex/Concave Curves",
           {Sum(18, "ln(a+b*x)", "", {kOne, kTermX}, OuterFunction::Ln),
            Closed<forms::PowerLaw>(23, "a*x^b", "Power (Freundlich)", {kOne, kLnX}, YT::Ln, R::Exp1),
            Closed<forms::ModifiedPower>(19, "a*b^x", "Modified Power", {kOne, kTermX}, YT::Ln, R::Exp1Exp2),
            Closed<forms::Exponential>(20, "a*exp(b*x)", "Exponential", {kOne, kTermX}, YT::Ln, R::Exp1),
            Closed<forms::ModifiedExponential>(21, "a*exp(b/x)", "Modified Exponential", {kOne, kReciprocal}, YT::Ln,
                                               R::Exp1),
            Sum(22, "exp(a+b*x)", "", {kOne, kTermX}, OuterFunction::Exp),
            Closed<forms::RectangularHyperbola>(24, "a*b*x/(1+b*x)", "Rectangular Hyperbola", {kOne, kReciprocal},
                                                Reciprocal, R::Hyperbola),
            Closed<forms::XOverLine>(25, "x/(a*x+b)", "", {kOne, kReciprocal}, Reciprocal),
            Sum(26, "1/(a+b*x)", "Reciprocal Model (Shinozaki & Kira)", {kOne, kTermX}, OuterFunction::Reciprocal),
            Closed<forms::AOverOnePlusBX>(27, "a/(1+b*x)", "", {kOne, kTermX}, Reciprocal, R::Reciprocals),
            Closed<forms::SlopeAndRoot>(28, "a*(x-b)", "Reparameterization of First Order Polynomial",
                                        {kTermX, kMinusOne}, None, R::Quotient),
            Closed<forms::ShiftedPowerLaw>(29, "a*(1+x)^b", "", {kOne, kLnOnePlusX}, YT::Ln, R::Exp1),
            Sum(32, "a+b*ln(x)", "Logarithm Model", {kOne, kLnX}),
            Sum(33, "1/(a+b*ln(x))", "Reciprocal Logarithm Model", {kOne, kLnX}, OuterFunction::Reciprocal),
            Closed<forms::Geometric>(35, "a*x^(b*x)", "Geometric Model", {kOne, {kX, kLn}}, YT::Ln, R::Exp1),
            Closed<forms::ModifiedGeometric>(36, "a*x^(b/x)", "Modified Geometric Model", {kOne, {kLn, kXInverse}},
                                             YT::Ln, R::Exp1),
            Closed<forms::SaturationGrowth>(52, "a*x/(b+x)", "Saturation Growth Model", {kOne, kReciprocal}, Reciprocal,
                                            R::Reciprocals),
            Sum(53, "a+b/x", "Hyperbolic Fit", {kOne, kReciprocal})});
  AddGroup(
      models, "Three Parameter Convex/Concave Curves",
      {Closed<forms::Hoerl>(37, "a*b^x*x^c", "Hoerl", {kOne, kTermX, kLnX}, YT::Ln, R::Exp1Exp2),
       Closed<forms::ModifiedHoerl>(38, "a*b^(1/x)*x^c", "Modified Hoerl", {kOne, kReciprocal, kLnX}, YT::Ln,
                                    R::Exp1Exp2),
       Sum(30, "1/(a+b*x+c*x^2)", "Reciprocal Quadratic (Holliday)", {kOne, kTermX, kSquare},
           OuterFunction::Reciprocal),
       Sum(34, "exp(a+b/x+c*ln(x))", "Vapor Pressure Model", {kOne, kReciprocal, kLnX}, OuterFunction::Exp),
       Sum(54, "a+b*x+c/x^2", "Heat Capacity Model", {kOne, kTermX, Factor{X, -2}}),
       Closed<forms::AOverQuadratic>(31, "a/(1+b*x+c*x^2)", "", {kOne, kTermX, kSquare}, Reciprocal, R::Reciprocals)});
}

void AddCurvesWithExtremes(std::vector<CatalogueModel>& models) {
  using enum YTransform;
  using R = Restoration;
  using YT = YTransform;
  AddGroup(models, "Single Parameter Curves with Maxima and Minima",
           {Closed<forms::ShiftedCosine>(39, "cos(x+a)", "Trigonometric", {kOne, kTermX}, ArcCosine),
            Closed<forms::ShiftedSine>(40, "sin(x+a)", "Trigonometric II", {kOne, kTermX}, ArcSine),
            Closed<forms::OneMinusBell>(41, "1-exp(-a*x^2)", "", {kMinusSquare}, LnOneMinus),
            Closed<forms::Bell>(42, "exp(-a*x^2)", "", {kMinusSquare}, YT::Ln)});
  AddGroup(models, "Two Parameter Curves with Maxima and Minima",
           {Sum(43, "a*cos(x)+b*sin(x)", "Two Parameter", {kCosine, kSine})});
  AddGroup(models, "Three Parameter Curves with Maxima and Minima",
           {Closed<forms::XOverQuadratic>(44, "x/(a+b*x-c*x^2)", "", {kReciprocal, kOne, kMinusX}, Reciprocal),
            Sum(45, "a+b*cos(x)+c*sin(x)", "", {kOne, kCosine, kSine}),
            Sum(46, "exp(a+b*x+c*x^2)", "", {kOne, kTermX, kSquare}, OuterFunction::Exp),
            Closed<forms::Gunary>(47, "x/(a+b*x+c*sqr(x))", "Gunary Model", {kReciprocal, kOne, Factor{X, -0.5}},
                                  Reciprocal),
            Closed<forms::PowerTimesExp>(48, "a*x^b*exp(-c*x)", "", {kOne, kLnX, kMinusX}, YT::Ln, R::Exp1),
            Closed<forms::PowerTimesShiftedExp>(49, "x^a*exp(b-c*x)", "", {kLnX, kOne, kMinusX}, YT::Ln),
            Closed<forms::BetaDistribution>(50, "a*x^b*(1-x)^c", "Beta Distribution Model", {kOne, kLnX, kLnOneMinusX},
                                            YT::Ln, R::Exp1),
            Closed<forms::Gaussian>(51, "a*exp((-(x-b)^2)/(2*c^2))", "Gaussian (Normal) Distribution Model",
                                    {kOne, kTermX, kSquare}, YT::Ln, R::Gaussian)});
}

void AddSigmoidCurves(std::vector<CatalogueModel>& models) {
  using enum YTransform;
  using R = Restoration;
  AddGroup(models, "Single Parameter Sigmoidally Shaped Curves",
           {Closed<forms::OneMinusExpOfPower>(55, "1-exp(-x^a)", "", {kLnX}, LnMinusLnOneMinus),
            Closed<forms::ExpOfPower>(56, "exp(-x^a)", "", {kLnX}, LnMinusLn)});
  // The transform of 59 is one logarithm short of making it linear, so a linear solve gives it a poor start. It is
  // kept: starts and linear solutions of the model depend on it.
  AddGroup(models, "Two Parameter Sigmoidally Shaped Curves",
           {Closed<forms::OneMinusExpOfPowerLaw>(57, "1-exp(-a*x^b)", "", {kOne, kLnX}, LnMinusLnOneMinus, R::Exp1),
            Closed<forms::OneMinusExpOfModifiedPower>(58, "1-exp(-a*b^x)", "", {kOne, kTermX}, LnMinusLnOneMinus,
                                                      R::Exp1Exp2),
            Closed<forms::DoubleExp>(59, "exp(-exp(a-b*x))", "", {kOne, kMinusX}, YTransform::Ln)});
}

// ---- the groups made from one list of terms

struct NamedTerm {
  const char* Text;
  Term Value;
  bool AloneElsewhere = false;  // an intercept with this term is the model of another group
};

constexpr NamedTerm kInterceptTerms[] = {{"*x", kX, true},
                                         {"*x*ln(x)", {kX, kLn}},
                                         {"*x^1.5", Factor{X, 1.5}},
                                         {"*x^2", Factor{X, 2}},
                                         {"*x^2*ln(x)", {{X, 2}, kLn}},
                                         {"*x^2.5", Factor{X, 2.5}},
                                         {"*x^3", Factor{X, 3}},
                                         {"*exp(x)", Factor{Exp}},
                                         {"*x^.5*ln(x)", {{X, 0.5}, kLn}},
                                         {"*ln(x)^2", Factor{Ln, 2}},
                                         {"*x/ln(x)", {kX, kLnInverse}},
                                         {"*x^.5", Factor{X, 0.5}},
                                         {"*ln(x)", kLn, true},
                                         {"/ln(x)", kLnInverse, true},
                                         {"/x^.5", Factor{X, -0.5}},
                                         {"*ln(x)/x", {kLn, kXInverse}},
                                         {"/x", kXInverse, true},
                                         {"/x^1.5", Factor{X, -1.5}},
                                         {"*ln(x)/x^2", {kLn, {X, -2}}},
                                         {"/x^2", Factor{X, -2}},
                                         {"*exp(-x)", Factor{Exp, -1}}};

CatalogueModel Intercept(int number, const char* group, std::initializer_list<const NamedTerm*> terms) {
  CatalogueModel model;
  model.IDIndex = number;
  model.Group = group;
  model.ID = "a";
  model.Basis.reserve(1 + terms.size());
  model.Basis.push_back(kOne);
  for (const NamedTerm* term : terms) {
    model.ID += '+';
    model.ID += CoefficientLetter(static_cast<int>(model.Basis.size()));
    model.ID += term->Text;
    model.Basis.push_back(term->Value);
  }
  model.Definition = model.ID;
  model.NumCoefficients = model.NumXBasis();
  return model;
}

void AddInterceptModels(std::vector<CatalogueModel>& models) {
  int number = 90;
  for (const NamedTerm& term : kInterceptTerms)
    if (!term.AloneElsewhere) models.push_back(Intercept(number++, "Single Term Intercept", {&term}));
  // Pairs that other groups have: two polynomials, and the heat capacity model.
  const std::array<std::pair<std::string_view, std::string_view>, 3> elsewhere = {
      {{"*x", "*x^2"}, {"*x", "/x^2"}, {"/x", "/x^2"}}};
  for (auto first = std::begin(kInterceptTerms); first != std::end(kInterceptTerms); ++first) {
    for (auto second = first + 1; second != std::end(kInterceptTerms); ++second) {
      const std::pair<std::string_view, std::string_view> pair(first->Text, second->Text);
      if (std::find(elsewhere.begin(), elsewhere.end(), pair) == elsewhere.end())
        models.push_back(Intercept(number++, "Two Term Intercept", {first, second}));
    }
  }
}

}  // namespace

std::vector<CatalogueModel> OneVariableModels() {
  std::vector<CatalogueModel> models;
  models.reserve(298);
  AddNestedFamilies(models);
  AddConvexCurves(models);
  AddCurvesWithExtremes(models);
  AddSigmoidCurves(models);
  AddInterceptModels(models);
  return models;
}

}  // namespace quorvex
