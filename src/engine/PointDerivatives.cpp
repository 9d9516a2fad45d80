#include "engine/PointDerivatives.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "core/Limits.h"
#include "core/NumericFault.h"
#include "engine/ModelClass.h"
#include "equation/BlockOperations.h"
#include "equation/Expression.h"

namespace quorvex {
namespace {

DerivativeKind MethodFor(ModelClass& model, DerivativeKind wanted) {
  if (!model.UserType || (wanted == DerivativeKind::Exact && !model.HasExactDerivatives()))
    return DerivativeKind::Richardson;
  return wanted;
}

}  // namespace

PointDerivatives::PointDerivatives(ModelClass& model, const SolveData& data, DerivativeKind derivativeMethod)
    : model_(model),
      data_(data),
      method_(MethodFor(model, derivativeMethod)),
      dyda_(static_cast<std::size_t>(model.NumDependentVar())),
      columns_(dyda_.size()) {
  for (AlignedBlock& column : dyda_) room_.push_back(column.data());
}

bool PointDerivatives::Compute(std::size_t first, std::size_t n) {
  return model_.DifferentiateBlock(data_, first, n, method_, values_.data(), room_.data(), columns_.data()) ||
         PointByPoint(first, n);
}

bool PointDerivatives::ComputeSharp(std::size_t first, std::size_t n) {
  if (!model_.DifferentiateBlock(data_, first, n, method_, values_.data(), room_.data(), columns_.data()))
    return PointByPoint(first, n);
  if (method_ != DerivativeKind::Exact) model_.SharpenDerivatives(n, room_.data());
  return true;
}

void PointDerivatives::TakeWeighted(std::size_t first, std::size_t n, const std::vector<std::size_t>& coefficients,
                                    ColumnMatrix& rows) {
  for (std::size_t i = 0; i < n; ++i) root_[i] = std::sqrt(data_.sig[first + i]);
  for (std::size_t j = 0; j < coefficients.size(); ++j)
    BinaryOverBlock(kMultiply, {root_.data(), 0}, {columns_[coefficients[j]], 0}, n, rows.Column(j) + 1);
}

bool PointDerivatives::ComputeValues(std::size_t first, std::size_t n) {
  if (model_.EvaluateBlock(data_.X, first, n, values_.data())) return true;
  std::array<double, kMostIndependentVariables> x;
  for (std::size_t i = 0; i < n; ++i)
    if (!ValueAt(data_.Point(first + i, x), values_[i])) return false;
  return true;
}

bool PointDerivatives::ValueAt(std::span<const double> point, double& value) {
  if (model_.Evaluate(point, value)) return true;
  model_.ErrorMessage = model_.EvaluationFailure(point);
  return false;
}

bool PointDerivatives::PointByPoint(std::size_t first, std::size_t n) {
  std::array<double, kMostIndependentVariables> x;
  std::vector<double> dyda(dyda_.size());
  std::string ErrString;
  std::copy(room_.begin(), room_.end(), columns_.begin());
  for (std::size_t i = 0; i < n; ++i) {
    const std::span<const double> point = data_.Point(first + i, x);
    if (!ValueAt(point, values_[i])) return false;
    const bool differentiated = method_ == DerivativeKind::Central ? model_.NumericalDerivatives(point, dyda, ErrString)
                                : method_ == DerivativeKind::Exact ? model_.ExactDerivatives(point, dyda, ErrString)
                                                                   : model_.Derivative(point, dyda, ErrString);
    if (!differentiated) {
      model_.ErrorMessage = model_.DerivativeFailure(point);
      if (method_ != DerivativeKind::Central) throw NumericFault();
      return false;
    }
    for (std::size_t l = 0; l < dyda.size(); ++l) dyda_[l][i] = dyda[l];
  }
  return true;
}

}  // namespace quorvex
