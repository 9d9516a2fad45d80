#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "core/SolveData.h"
#include "engine/BlockTeam.h"
#include "engine/SolveForm.h"
#include "linear/MinimizeInBox.h"
#include "linear/SvdDecompose.h"

namespace quorvex {

class ModelClass;

// What a model leaves of its points, and how that changes with its free coefficients, for searches that meet places
// where a model has no value: root(weight) * (y - f), in units of a power of 2 near the largest |y|. Vectors of
// coefficients hold the free ones alone; held ones stay as they are in the model, which each call leaves at the
// coefficients that it was last computed with.
//
// No operation throws. False means: no value or derivative at some point, or none that is finite, or the form is
// aborted.
class WeightedResiduals {
 public:
  // The model has its input statistics by then, which its text may name. `threads` as Settings::Threads counts them;
  // the numbers are the same for any.
  WeightedResiduals(ModelClass& model, const SolveData& data, SolveForm& form, int threads = 1);

  std::size_t PointCount() const { return wy_.size(); }
  std::size_t FreeCount() const { return free_.size(); }
  // The free ones among all coefficients, and back into the model.
  std::vector<double> FreeOf(std::span<const double> all) const;
  void Put(std::span<const double> a);
  const Box& Bounds() const { return box_; }  // of the free ones
  double Unit() const { return unit_; }       // the factor that residuals are in units of

  // The weighted y that the fit is to meet, and the weighted fit. The residuals are their difference.
  const std::vector<double>& Target() const { return wy_; }
  bool Fitted(std::span<const double> a, std::vector<double>& f);
  bool Residuals(std::span<const double> a, std::vector<double>& r);

  // Derivatives of the weighted fit, a column per free coefficient: closed forms of a built-in model where they have a
  // value, else central differences. Their step makes the fit change by some 1e-5 of its size, as far as the
  // coefficient and its bounds let it, so that it follows the coefficient's own scale: a coefficient of 0, or one that
  // is small beside what would matter, keeps its derivative.
  bool Derivatives(std::span<const double> a, ColumnMatrix& J);
  // Another search begins, elsewhere: the scales of the one before say nothing about it.
  void ForgetScales() { change_.assign(change_.size(), 0.0); }

 private:
  bool OverAllBlocks(const std::function<bool(std::size_t member, std::size_t block, std::size_t slot)>& compute);
  bool ClosedForms(ColumnMatrix& J);
  bool Difference(std::size_t j, std::vector<double>& a, double size, double* column);

  ModelClass& model_;
  const SolveData& data_;
  SolveForm& form_;
  std::unique_ptr<BlockTeam> team_;
  double unit_ = 1;
  Box box_;
  std::vector<int> free_;     // numbers of the free coefficients, from 1
  std::vector<double> root_;  // root of the weight, in the unit
  std::vector<double> wy_;
  std::vector<double> change_;  // of each free coefficient: how much of it changes the fit by its size; 0 not known
  std::vector<double> above_, below_;
};

// Euclidean length, in range whatever the elements; infinite only where it is.
double Norm(std::span<const double> values);

}  // namespace quorvex
