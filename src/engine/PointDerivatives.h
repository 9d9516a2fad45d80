#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "core/AlignedBlock.h"
#include "core/DerivativeKind.h"
#include "core/SolveData.h"
#include "linear/SvdDecompose.h"

namespace quorvex {

class ModelClass;

// Values and derivatives of a model at its present coefficients, for a block of the data after the other.
class PointDerivatives {
 public:
  // `derivativeMethod` counts for models that are not built in; Exact stands for Richardson where the model has no
  // exact derivatives.
  PointDerivatives(ModelClass& model, const SolveData& data, DerivativeKind derivativeMethod);

  // Of points first to first + n - 1, n at most kBlock. A block that cannot be computed as one is computed point by
  // point, which finds the point that fails and leaves the model as it does. False, with the reason in the model's
  // ErrorMessage, where there is no value or numerical derivative; throws NumericFault where there is no analytical
  // one.
  bool Compute(std::size_t first, std::size_t n);
  // The same with numerical derivatives as exact as they can be: for variances, not for the steps of a search.
  bool ComputeSharp(std::size_t first, std::size_t n);

  // Values alone, to the bit those of Compute. False, with the reason, where there is none.
  bool ComputeValues(std::size_t first, std::size_t n);

  // Of the block that was computed last. The values may be overwritten.
  double* Values() { return values_.data(); }
  // Of each coefficient a column of derivatives.
  const double* const* Columns() const { return columns_.data(); }

  // Derivatives with respect to the coefficients of these numbers, from 0, times the root of each point's weight: n
  // rows from row 1 of `rows`, as TriangularFactor takes them.
  void TakeWeighted(std::size_t first, std::size_t n, const std::vector<std::size_t>& coefficients, ColumnMatrix& rows);

 private:
  bool PointByPoint(std::size_t first, std::size_t n);
  bool ValueAt(std::span<const double> point, double& value);

  ModelClass& model_;
  const SolveData& data_;
  const DerivativeKind method_;  // Richardson for a built-in model: Derivative decides
  AlignedBlock values_, root_;
  std::vector<AlignedBlock> dyda_;  // where the model has none of its own
  std::vector<double*> room_;       // there
  std::vector<const double*> columns_;
};

}  // namespace quorvex
