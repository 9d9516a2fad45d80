#pragma once

#include <optional>
#include <span>
#include <vector>

#include "equation/Catalogue.h"
#include "linear/MinimizeInBox.h"

namespace quorvex {

// The way of a built-in model into the linear solver and back: transform Y, solve for the coefficients of the linear
// form (engine/DesignSolve.h), convert them. Every built-in model has it; user models have none.

// Y as the linear form of the model has it; X has one column per independent variable. Throws NumericFault where the
// transform has no value, such as the logarithm of a Y that is not positive.
std::vector<double> LinearizeData(const CatalogueModel& model, std::span<const std::vector<double>> X,
                                  std::span<const double> y);

// Converts the NumXBasis() coefficients of the linear form, in place, to those of the model; the first NumCoefficients
// count. Throws NumericFault where that has no value.
void RestoreParameters(const CatalogueModel& model, std::span<double> a);

// The box of the linear form's coefficients that is a box of the model's. Nothing where the bounds of one coefficient
// would depend on another; an end above the other where a coefficient has no place between its bounds.
std::optional<Box> LinearFormBox(const CatalogueModel& model, const Box& box);

}  // namespace quorvex
