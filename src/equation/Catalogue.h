#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex {

struct ClosedForm;

// A function of one independent variable from which the terms of linear models are made.
enum class XFunction { X, Ln, Exp, Cos, Sin, LnOnePlus, LnOneMinus };

// One factor of a term: Function(x) to Power, where x is independent variable `Variable` (from 0). Powers are whole,
// and for X also halves; Exp has 1 or -1, meaning exp(x) and exp(-x).
struct Factor {
  XFunction Function = XFunction::X;
  double Power = 1;
  int Variable = 0;
};

// What a coefficient is multiplied by: Sign times the product of at most two factors; without factors, a constant.
class Term {
 public:
  constexpr Term(double sign = 1) : Sign(sign) {}
  constexpr Term(Factor factor, double sign = 1) : Sign(sign), factors_{factor}, count_(1) {}
  constexpr Term(Factor first, Factor second) : factors_{first, second}, count_(2) {}
  std::span<const Factor> Factors() const { return {factors_.data(), count_}; }

  double Sign = 1;

 private:
  std::array<Factor, 2> factors_{};
  std::size_t count_ = 0;
};

// A run of coefficients that multiply u, u^2, ..., u^Degree, where u is Base to Base.Power (1 or -1). The coefficient
// of u^k is number Offset + Step * k, from 0.
struct NestedRun {
  Factor Base;
  int Degree;
  int Offset;
  int Step;
};

// How a model's coefficients c and basis functions t combine to its value.
enum class ModelShape {
  Sum,         // c1*t1 + c2*t2 + ..., term by term
  Nested,      // the same for polynomials in one quantity per run, evaluated in nested form
  ClosedForm,  // not linear in c; Form computes it, and the basis holds after the transforms below
};

// What is applied to a Sum or Nested model as a whole.
enum class OuterFunction { None, Exp, Reciprocal, Ln };

// The transform of Y that makes a model linear in (functions of) its coefficients.
enum class YTransform {
  None,
  Ln,                    // ln(y)
  Exp,                   // exp(y)
  Reciprocal,            // 1/y
  ReciprocalMinusOne,    // 1/y - 1
  ReciprocalMinusX,      // 1/y - x
  LnMinusX,              // ln(y) - x
  ExpMinusX,             // exp(y) - x
  LnOneMinus,            // ln(1 - y)
  LnReciprocalOneMinus,  // ln(1/(1 - y))
  LnMinusLn,             // ln(-ln(y))
  LnMinusLnOneMinus,     // ln(-ln(1 - y))
  ArcSine,
  ArcCosine
};

// The way from the coefficients of the linear form to those of the model, a1 being the first. Later steps use the new
// values of earlier ones.
enum class Restoration {
  None,
  Exp1,         // a1 = exp(a1)
  Exp1Exp2,     // a1 = exp(a1), a2 = exp(a2)
  Exp1Exp3,     // a1 = exp(a1), a3 = exp(a3)
  Hyperbola,    // a1 = 1/a1, a2 = 1/(a1*a2)
  Reciprocals,  // a1 = 1/a1, every other one is multiplied by a1
  Quotient,     // a2 = a2/a1
  Gaussian      // a3 = sqr(-1/(2*a3)), a2 = a2*a3^2, a1 = exp(a1 + a2^2/(2*a3^2))
};

// A built-in model: one row of the catalogue.
struct CatalogueModel {
  int IDIndex = 0;          // its number, unique within the catalogue of one variable count; not the order of display
  std::string ID;           // its key; matched exactly
  std::string Definition;   // its formula, with "." and "," (whoever parses it under another locale localizes it first)
  std::string Description;  // a name for the user, or ""
  std::string Group;
  int NumVariables = 1;     // x, or x1, x2, ...
  int NumCoefficients = 0;  // a, b, c, ... in order

  ModelShape Shape = ModelShape::Sum;
  OuterFunction Outer = OuterFunction::None;
  std::vector<Term> Basis;           // one term per coefficient of the linear form
  std::vector<NestedRun> Runs;       // of a Nested model, whose one constant coefficient is number ConstantAt
  int ConstantAt = 0;                // from 0
  const ClosedForm* Form = nullptr;  // of a model that is no sum
  YTransform Transform = YTransform::None;
  Restoration Restore = Restoration::None;

  // Number of basis functions of the linear form. It is the number of coefficients except for cos(x+a) and sin(x+a),
  // whose linear form x + a has a second one, x.
  int NumXBasis() const { return static_cast<int>(Basis.size()); }
};

// The built-in models for a number of independent variables, in the order of display: 298 for one variable, 242 for
// two, 3 for each count from 3 to 20, none for others. Made at the first call, shared from then on.
const std::vector<CatalogueModel>& Catalogue(int independentVariables);

// The model with that ID, compared exactly, or null.
const CatalogueModel* LookupBuiltInModel(std::string_view id, int independentVariables);

// The catalogue as text: number, group, ID, definition and description, separated by tabs, one model a line.
std::string ListModels(int independentVariables);

}  // namespace quorvex
