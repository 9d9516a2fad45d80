#include "equation/Linearization.h"

#include <cmath>

#include "core/FaultFlags.h"
#include "core/NumericFault.h"
#include "functions/Elementary.h"

namespace quorvex {

namespace {

double Transform(YTransform transform, double x, double y) {
  switch (transform) {
    case YTransform::None:
      return y;
    case YTransform::Ln:
      return Ln(y);
    case YTransform::Exp:
      return Exp(y);
    case YTransform::Reciprocal:
      return 1 / y;
    case YTransform::ReciprocalMinusOne:
      return 1 / y - 1;
    case YTransform::ReciprocalMinusX:
      return 1 / y - x;
    case YTransform::LnMinusX:
      return Ln(y) - x;
    case YTransform::ExpMinusX:
      return Exp(y) - x;
    case YTransform::LnOneMinus:
      return Ln(1 - y);
    case YTransform::LnReciprocalOneMinus:
      return Ln(1 / (1 - y));
    case YTransform::LnMinusLn:
      return Ln(-Ln(y));
    case YTransform::LnMinusLnOneMinus:
      return Ln(-Ln(1 - y));
    case YTransform::ArcSine:
      return Atn(y / Sqr(1 - y * y));
    case YTransform::ArcCosine:
      return Atn(-y / Sqr(1 - y * y)) + 2 * Atn(1);
  }
  return y;
}

void Restore(Restoration restoration, std::span<double> a) {
  switch (restoration) {
    case Restoration::None:
      return;
    case Restoration::Exp1:
      a[0] = Exp(a[0]);
      return;
    case Restoration::Exp1Exp2:
      a[0] = Exp(a[0]);
      a[1] = Exp(a[1]);
      return;
    case Restoration::Exp1Exp3:
      a[0] = Exp(a[0]);
      a[2] = Exp(a[2]);
      return;
    case Restoration::Hyperbola:
      a[0] = 1 / a[0];
      a[1] = 1 / (a[0] * a[1]);
      return;
    case Restoration::Reciprocals:
      a[0] = 1 / a[0];
      for (std::size_t j = 1; j < a.size(); ++j) a[j] = a[0] * a[j];
      return;
    case Restoration::Quotient:
      a[1] = a[1] / a[0];
      return;
    case Restoration::Gaussian: {
      // ln(y) = ln(a) - (x - b)^2/(2 c^2) as a polynomial in x: c is in its last coefficient, b in the second with c,
      // and a in the first with both.
      a[2] = Sqr(-1 / (2 * a[2]));
      const double square = a[2] * a[2];
      a[1] = a[1] * square;
      a[0] = Exp(a[0] + a[1] * a[1] / (2 * square));
      return;
    }
  }
}

}  // namespace

std::vector<double> LinearizeData(const CatalogueModel& model, std::span<const std::vector<double>> X,
                                  std::span<const double> y) {
  std::vector<double> yT(y.size());
  ClearFaultFlags();
  for (std::size_t i = 0; i < y.size(); ++i) yT[i] = Transform(model.Transform, X[0][i], y[i]);
  if (FaultFlagsRaised()) throw NumericFault();
  return yT;
}

void RestoreParameters(const CatalogueModel& model, std::span<double> a) {
  ClearFaultFlags();
  Restore(model.Restore, a);
  if (FaultFlagsRaised()) throw NumericFault();
}

std::optional<Box> LinearFormBox(const CatalogueModel& model, const Box& box) {
  Box linear = box;
  linear.Lower.resize(model.Basis.size(), -HUGE_VAL);
  linear.Upper.resize(model.Basis.size(), HUGE_VAL);
  const auto logarithm = [&](std::size_t j) {
    linear.Lower[j] = box.Lower[j] > 0 ? Ln(box.Lower[j]) : -HUGE_VAL;
    if (box.Upper[j] < HUGE_VAL) linear.Upper[j] = box.Upper[j] > 0 ? Ln(box.Upper[j]) : -HUGE_VAL;
    // Nothing is as small as the logarithm of 0.
    if (box.Upper[j] <= 0) linear.Lower[j] = HUGE_VAL;
  };
  switch (model.Restore) {
    case Restoration::None:
      return linear;
    case Restoration::Exp1:
      logarithm(0);
      return linear;
    case Restoration::Exp1Exp2:
      logarithm(0);
      logarithm(1);
      return linear;
    case Restoration::Exp1Exp3:
      logarithm(0);
      logarithm(2);
      return linear;
    case Restoration::Hyperbola:
    case Restoration::Reciprocals:
    case Restoration::Quotient:
    case Restoration::Gaussian:
      break;
  }
  return std::nullopt;
}

}  // namespace quorvex
