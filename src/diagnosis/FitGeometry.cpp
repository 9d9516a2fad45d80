#include "diagnosis/FitGeometry.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>

#include "core/Limits.h"
#include "core/NumericFault.h"
#include "engine/BlockTeam.h"
#include "engine/ModelClass.h"
#include "engine/PointDerivatives.h"
#include "engine/TypedDerivatives.h"
#include "linear/Householder.h"
#include "linear/TriangularFactor.h"

namespace quorvex {
namespace {

double LengthIn(const Length& length) { return std::ldexp(length.fraction, length.exponent); }

// What derivatives leave behind in a model that they are taken of, put back.
class Untouched {
 public:
  explicit Untouched(ModelClass& model)
      : model_(model), values_(model.CoefficientValues), message_(model.ErrorMessage) {}
  ~Untouched() {
    model_.CoefficientValues = values_;
    model_.ErrorMessage = message_;
  }
  Untouched(const Untouched&) = delete;
  Untouched& operator=(const Untouched&) = delete;

 private:
  ModelClass& model_;
  const std::vector<double> values_;
  const std::string message_;
};

// Goes through the data block by block and hands the weighted derivatives of each, in row 1 and below and with the
// weighted residuals behind them, to `use`, on any thread and in any order, and then to `take`, in their order, both
// with the number of the first point and of the points. False where some are missing, or the form is aborted.
template <class Use, class Take>
bool ForEachBlock(ModelClass& model, const SolveData& data, const std::vector<int>& free,
                  DerivativeKind derivativeMethod, SolveForm& form, int threads, Use use, Take take) {
  const Untouched untouched(model);
  const TypedDerivativesInUse typed(model);
  std::vector<std::size_t> numbers;
  for (const int i : free) numbers.push_back(static_cast<std::size_t>(i - 1));
  BlockTeam team(model, data.N(), threads);
  std::vector<std::unique_ptr<PointDerivatives>> points;
  for (std::size_t member = 0; member < team.Size(); ++member)
    points.push_back(std::make_unique<PointDerivatives>(team.Model(member), data, derivativeMethod));
  std::vector<ColumnMatrix> slots(team.Slots((kBlock + 1) * (free.size() + 1)),
                                  ColumnMatrix(kBlock + 1, free.size() + 1));
  const auto goOn = [&form] {
    form.Pulse();
    return !form.Aborted;
  };
  const auto count = [&data](std::size_t block) { return std::min(kBlock, data.N() - block * kBlock); };
  const auto compute = [&](std::size_t member, std::size_t block, std::size_t slot) {
    const std::size_t first = block * kBlock, n = count(block);
    PointDerivatives& own = *points[member];
    ColumnMatrix& rows = slots[slot];
    if (!own.ComputeSharp(first, n)) return false;
    own.TakeWeighted(first, n, numbers, rows);
    double* const residuals = rows.Column(free.size()) + 1;
    for (std::size_t i = 0; i < n; ++i)
      residuals[i] = std::sqrt(data.sig[first + i]) * (data.Y[first + i] - own.Values()[i]);
    for (std::size_t j = 0; j <= free.size(); ++j)
      if (!std::all_of(rows.Column(j) + 1, rows.Column(j) + 1 + n, [](double d) { return std::isfinite(d); }))
        return false;
    use(rows, first, n);
    return true;
  };
  const auto inOrder = [&](std::size_t block, std::size_t slot) {
    take(slots[slot], block * kBlock, count(block));
    return true;
  };
  try {
    return team.Run(slots.size(), goOn, compute, inOrder) * kBlock >= data.N();
  } catch (const NumericFault&) {
    return false;
  }
}

}  // namespace

std::optional<FitGeometry> FitGeometry::At(ModelClass& model, const SolveData& data, DerivativeKind derivativeMethod,
                                           SolveForm& form, int threads) {
  FitGeometry geometry;
  for (int i = 1; i <= model.NumDependentVar(); ++i)
    if (!model.IsHeld(i) && !model.IsAtBound(i)) geometry.free_.push_back(i);
  const std::size_t p = geometry.free_.size();
  TriangularFactor factor(p + 1);  // of the derivatives and the residuals
  const auto nothing = [](const ColumnMatrix&, std::size_t, std::size_t) {};
  const auto append = [&factor](ColumnMatrix& rows, std::size_t, std::size_t n) { factor.Append(rows, n); };
  if (!ForEachBlock(model, data, geometry.free_, derivativeMethod, form, threads, nothing, append)) return std::nullopt;
  geometry.r_ = ColumnMatrix(p, p);
  for (std::size_t j = 0; j < p; ++j) std::copy_n(factor.R().Column(j), p, geometry.r_.Column(j));
  // The last column is Q^T e, and below it what no change of the coefficients takes away.
  const double along = LengthIn(LengthOf(factor.R().Column(p), p)), rest = std::abs(factor.R()(p, p));
  if (p > 0 && along > 0)
    geometry.relativeOffset_ =
        data.N() > p ? along / std::sqrt(static_cast<double>(p)) / (rest / std::sqrt(static_cast<double>(data.N() - p)))
                     : NAN;
  if (!geometry.Decompose()) return std::nullopt;
  return geometry;
}

std::optional<FitGeometry> FitGeometry::Of(std::vector<int> free, ColumnMatrix r) {
  FitGeometry geometry;
  geometry.free_ = std::move(free);
  geometry.r_ = std::move(r);
  if (!geometry.Decompose()) return std::nullopt;
  return geometry;
}

// Scales the columns to equal lengths and finds the condition. Scaling to equal lengths is within a factor of the root
// of p of the best (A. van der Sluis, Numer. Math. 14, 1969), and takes the units of the coefficients out of it.
bool FitGeometry::Decompose() {
  const std::size_t p = free_.size();
  reciprocalCondition_ = 1;
  scaled_ = r_;
  lengths_.resize(p);
  for (std::size_t j = 0; j < p; ++j) {
    const Length length = LengthOf(r_.Column(j), j + 1);
    lengths_[j] = LengthIn(length);
    if (!std::isfinite(lengths_[j])) return false;
    if (lengths_[j] == 0) continue;
    ScaleByPowerOfTwo(scaled_.Column(j), j + 1, -length.exponent);
    for (std::size_t i = 0; i <= j; ++i) scaled_(i, j) /= length.fraction;
  }
  if (p == 0) return true;
  ColumnMatrix u = scaled_, v;
  std::vector<double> w;
  try {
    SvdDecompose(u, w, v);
  } catch (const NumericFault&) {
    return false;
  }
  const auto [least, most] = std::ranges::minmax_element(w);
  reciprocalCondition_ = *most > 0 ? *least / *most : 0;
  const double* const direction = v.Column(static_cast<std::size_t>(least - w.begin()));
  weakest_.assign(direction, direction + p);
  return true;
}

Matrix FitGeometry::Covariance() const {
  const std::size_t p = free_.size();
  const ColumnMatrix inverse = InverseTriangle(scaled_);
  Matrix covariance(p);
  for (std::size_t i = 0; i < p; ++i)
    for (std::size_t j = 0; j <= i; ++j) {
      double sum = 0;
      for (std::size_t k = i; k < p; ++k) sum += inverse(i, k) * inverse(j, k);
      covariance(i, j) = covariance(j, i) = sum / lengths_[i] / lengths_[j];
    }
  return covariance;
}

// The angles between the rows of the inverse, which no unit touches.
Matrix FitGeometry::Correlation() const {
  const std::size_t p = free_.size();
  const ColumnMatrix inverse = InverseTriangle(scaled_);
  Matrix correlation(p);
  std::vector<std::vector<double>> rows(p, std::vector<double>(p));
  for (std::size_t i = 0; i < p; ++i) {
    for (std::size_t k = i; k < p; ++k) rows[i][k] = inverse(i, k);
    const double length = LengthIn(LengthOf(rows[i].data(), p));
    for (double& element : rows[i]) element /= length;
  }
  for (std::size_t i = 0; i < p; ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      double sum = 0;
      for (std::size_t k = i; k < p; ++k) sum += rows[i][k] * rows[j][k];
      correlation(i, j) = correlation(j, i) = std::isfinite(sum) ? std::clamp(sum, -1.0, 1.0) : NAN;
    }
    correlation(i, i) = 1;
  }
  return correlation;
}

// R^-T times the gradient, by R^T z = gradient in units of the columns' lengths.
std::vector<double> FitGeometry::InUnitsOfErrors(std::span<const double> gradient) const {
  std::vector<double> z(gradient.size());
  for (std::size_t j = 0; j < z.size(); ++j) {
    double rest = gradient[j] / lengths_[j];
    for (std::size_t k = 0; k < j; ++k) rest -= scaled_(k, j) * z[k];
    z[j] = rest / scaled_(j, j);
  }
  return z;
}

double FitGeometry::Variance(std::span<const double> gradient) const {
  double sum = 0;
  for (const double element : InUnitsOfErrors(gradient)) sum += element * element;
  return sum;
}

// With the largest element near 1, since a quantity may be of any size and its square beyond a double's.
double FitGeometry::Deviation(std::span<const double> gradient) const {
  const std::vector<double> z = InUnitsOfErrors(gradient);
  if (!std::ranges::all_of(z, [](double element) { return std::isfinite(element); })) return NAN;
  double largest = 0, sum = 0;
  for (const double element : z) largest = std::max(largest, std::abs(element));
  if (largest == 0) return 0;
  const int exponent = std::ilogb(largest);
  for (const double element : z) {
    const double scaled = std::scalbn(element, -exponent);
    sum += scaled * scaled;
  }
  return std::scalbn(std::sqrt(sum), exponent);
}

std::optional<std::vector<double>> Leverages(ModelClass& model, const SolveData& data, const FitGeometry& geometry,
                                             DerivativeKind derivativeMethod, SolveForm& form, int threads) {
  std::vector<double> leverages(data.N());
  const ColumnMatrix& r = geometry.R();
  // The columns of J R^-1, from left to right, in the place of those of J. A column that another makes up for leaves
  // 0/0, and that no leverage.
  const auto use = [&](ColumnMatrix& rows, std::size_t first, std::size_t n) {
    for (std::size_t j = 0; j < r.Columns(); ++j) {
      double* const column = rows.Column(j) + 1;
      for (std::size_t k = 0; k < j; ++k) AddMultiple(-r(k, j), rows.Column(k) + 1, n, column);
      for (std::size_t i = 0; i < n; ++i) {
        column[i] /= r(j, j);
        leverages[first + i] += column[i] * column[i];
      }
    }
  };
  const auto nothing = [](const ColumnMatrix&, std::size_t, std::size_t) {};
  if (!ForEachBlock(model, data, geometry.Free(), derivativeMethod, form, threads, use, nothing)) return std::nullopt;
  for (double& leverage : leverages) {
    if (!std::isfinite(leverage)) return std::nullopt;
    leverage = std::min(leverage, 1.0);
  }
  return leverages;
}

}  // namespace quorvex
