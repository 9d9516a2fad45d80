#pragma once

#include <cstddef>

#include "equation/Catalogue.h"

namespace quorvex {

// Values, derivatives and basis functions of the built-in models, over a block of points. Shapes, for n points:
//   x     one column of n values per independent variable
//   a     the model's coefficients, in order
//   y     n values
//   dyda  one column of n values per coefficient, the partial derivative with respect to it
// n may be any number; blocks of some hundred points are the quickest. A point's results are the same bits whatever
// block it stands in, and y is the same from Value and ValueAndDerivatives.
//
// Nothing is checked: where a model has no value or no derivative, the processor's flags (core/FaultFlags.h) are
// raised. At the borders of a domain, such as x = 0 under a*x^b, a derivative is its limit where that exists.
// No argument may overlap a result.
void Value(const CatalogueModel& model, const double* const* x, std::size_t n, const double* a, double* y);
void ValueAndDerivatives(const CatalogueModel& model, const double* const* x, std::size_t n, const double* a, double* y,
                         double* const* dyda);
void Derivatives(const CatalogueModel& model, const double* const* x, std::size_t n, const double* a,
                 double* const* dyda);

// The functions of X by which the coefficients of the model's linear form are multiplied: NumXBasis() columns of n
// values. Powers go through Power. ln of an X that is not positive and division by zero raise flags.
void BasisFunctions(const CatalogueModel& model, const double* const* x, std::size_t n, double* const* basis);

// The same at one point: x has one value per variable, afunc receives NumXBasis() values.
void GetXBasisFunction(const CatalogueModel& model, const double* x, double* afunc);

// The two loops of a model that is not linear in its coefficients; NonlinearForms.h makes them.
struct ClosedForm {
  void (*Value)(const double* const* x, std::size_t n, const double* a, double* y);
  void (*ValueAndDerivatives)(const double* const* x, std::size_t n, const double* a, double* y, double* const* dyda);
};

}  // namespace quorvex
