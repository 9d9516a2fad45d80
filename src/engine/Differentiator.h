#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "core/DerivativeKind.h"
#include "core/SolveData.h"

namespace quorvex {

class ModelClass;

// Computes the derivatives of a model for the operations of ModelClass that bear the same names, which say what they
// give. By coefficients they come from the closed form of a built-in model, from the expressions that the user typed,
// where they are in use (in a fit, TypedDerivativesInUse), from Richardson's extrapolation, from central differences or
// from a reverse sweep over the compiled model. Nothing is differentiated symbolically.
class Differentiator {
 public:
  explicit Differentiator(ModelClass& model) : model_(model) {}

  bool Derivative(std::span<const double> x, std::span<double> dyda, std::string& ErrString);
  bool NumericalDerivatives(std::span<const double> x, std::span<double> dyda, std::string& ErrString);
  bool ExactDerivatives(std::span<const double> x, std::span<double> dyda, std::string& ErrString);
  double DDX(std::span<const double> x, int varindex);

  bool DifferentiateBlock(const SolveData& data, std::size_t first, std::size_t n, DerivativeKind method, double* y,
                          double* const* room, const double** dyda);
  void SharpenDerivatives(std::size_t n, double* const* dyda);

  // Whether the expressions that the user typed are taken from now on, of a model that has them.
  void UseTyped(bool use);

 private:
  bool ClosedForm(std::span<const double> x, std::span<double> dyda) const;
  bool DerivativesBy(std::span<const double> x, std::span<double> dyda, std::string& ErrString, bool extrapolate);
  bool Numerically(std::span<const double> x, std::span<double> dyda, bool extrapolate);

  bool ClosedFormBlock(const SolveData& data, std::size_t first, std::size_t n, double* y, double* const* dyda);
  bool SweptBlock(std::size_t n, double* const* room, const double** dyda);
  bool SweptAt(std::span<const double> x, std::span<double> dyda);
  bool NumericalBlock(std::size_t n, bool extrapolate, double* const* dyda);
  bool CentredQuotientBlock(std::size_t coefficient, double h, double* quotient);
  bool OneSidedQuotientBlock(std::size_t coefficient, double h, std::size_t n, double* quotient);
  bool ExtrapolateBlock(std::size_t coefficient, double h, std::size_t n, double* answer);

  ModelClass& model_;
};

}  // namespace quorvex
