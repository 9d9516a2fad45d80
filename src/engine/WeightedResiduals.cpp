#include "engine/WeightedResiduals.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/DerivativeKind.h"
#include "core/Limits.h"
#include "engine/ModelClass.h"
#include "linear/Householder.h"

namespace quorvex {
namespace {

// The cube root of the rounding of doubles: the relative step at which a central difference is most exact.
constexpr double kStep = 6.055e-6;

// Changes of the fit, as parts of its size, between which a difference has six digits and more.
constexpr double kLeastChange = 1e-8, kGreatestChange = 1e-3, kGoodChange = 1e-5;

bool AllFinite(std::span<const double> values) {
  return std::ranges::all_of(values, [](double v) { return std::isfinite(v); });
}

}  // namespace

double Norm(std::span<const double> values) {
  if (!AllFinite(values)) return HUGE_VAL;
  const Length length = LengthOf(values.data(), values.size());
  return std::ldexp(length.fraction, length.exponent);
}

WeightedResiduals::WeightedResiduals(ModelClass& model, const SolveData& data, SolveForm& form, int threads)
    : model_(model), data_(data), form_(form), team_(std::make_unique<BlockTeam>(model, data.N(), threads)) {
  for (int i = 1; i <= model.NumDependentVar(); ++i)
    if (!model.IsHeld(i)) free_.push_back(i);
  for (const int i : free_) {
    const Coefficient& coefficient = model.Coefficients[static_cast<std::size_t>(i - 1)];
    box_.Lower.push_back(coefficient.Minimum);
    box_.Upper.push_back(coefficient.Maximum);
  }
  change_.assign(free_.size(), 0.0);
  double most = 0;
  for (const double y : data.Y) most = std::max(most, std::abs(y));
  int exponent = 0;
  std::frexp(most, &exponent);
  unit_ = std::ldexp(1.0, std::clamp(-exponent, -1000, 1000));
  for (std::size_t i = 0; i < data.N(); ++i) {
    root_.push_back(std::sqrt(data.sig[i]) * unit_);
    wy_.push_back(root_[i] * data.Y[i]);
  }
}

std::vector<double> WeightedResiduals::FreeOf(std::span<const double> all) const {
  std::vector<double> a;
  for (const int i : free_) a.push_back(all[static_cast<std::size_t>(i - 1)]);
  return a;
}

void WeightedResiduals::Put(std::span<const double> a) {
  for (std::size_t j = 0; j < free_.size(); ++j) model_.SetValue(free_[j], a[j]);
}

// Of what is computed each number has a place of its own already.
bool WeightedResiduals::OverAllBlocks(const std::function<bool(std::size_t, std::size_t, std::size_t)>& compute) {
  const auto goOn = [&] {
    if (!form_.Aborted) form_.Pulse();
    return !form_.Aborted;
  };
  team_->ShareCoefficients();
  const auto take = [](std::size_t, std::size_t) { return true; };
  return team_->Run(team_->Slots(1), goOn, compute, take) * kBlock >= PointCount();
}

bool WeightedResiduals::Fitted(std::span<const double> a, std::vector<double>& f) {
  Put(a);
  f.resize(PointCount());
  const auto compute = [&](std::size_t member, std::size_t block, std::size_t) {
    const std::size_t first = block * kBlock;
    return team_->Model(member).ValuesOf(data_.X, first, std::min(kBlock, f.size() - first), &f[first]);
  };
  if (!OverAllBlocks(compute)) return false;
  for (std::size_t i = 0; i < f.size(); ++i) f[i] *= root_[i];
  return AllFinite(f);
}

bool WeightedResiduals::Residuals(std::span<const double> a, std::vector<double>& r) {
  if (!Fitted(a, r)) return false;
  for (std::size_t i = 0; i < r.size(); ++i) r[i] = wy_[i] - r[i];
  return AllFinite(r);
}

bool WeightedResiduals::Derivatives(std::span<const double> a, ColumnMatrix& J) {
  Put(a);
  if (J.Rows() != PointCount() || J.Columns() != FreeCount()) J = ColumnMatrix(PointCount(), FreeCount());
  if (ClosedForms(J)) return true;
  if (form_.Aborted) return false;
  std::vector<double> varied(a.begin(), a.end());
  if (!Fitted(varied, above_)) return false;
  const double size = std::max(Norm(above_), Norm(wy_));
  for (std::size_t j = 0; j < FreeCount(); ++j)
    if (!Difference(j, varied, size, J.Column(j))) return false;
  Put(a);
  return true;
}

bool WeightedResiduals::ClosedForms(ColumnMatrix& J) {
  if (model_.UserType) return false;
  struct Block {
    std::array<double, kBlock> y;
    std::vector<std::array<double, kBlock>> dyda;
    std::vector<double*> columns;
    std::vector<const double*> slopes;
  };
  std::vector<Block> blocks(team_->Size());
  for (Block& own : blocks) {
    own.dyda.resize(static_cast<std::size_t>(model_.NumDependentVar()));
    for (std::array<double, kBlock>& column : own.dyda) own.columns.push_back(column.data());
    own.slopes.resize(own.dyda.size());
  }
  const auto compute = [&](std::size_t member, std::size_t block, std::size_t) {
    Block& own = blocks[member];
    const std::size_t first = block * kBlock, n = std::min(kBlock, PointCount() - first);
    if (!team_->Model(member).DifferentiateBlock(data_, first, n, DerivativeKind::Richardson, own.y.data(),
                                                 own.columns.data(), own.slopes.data()))
      return false;
    for (std::size_t j = 0; j < FreeCount(); ++j) {
      const double* const column = own.slopes[static_cast<std::size_t>(free_[j] - 1)];
      for (std::size_t i = 0; i < n; ++i) J(first + i, j) = column[i] * root_[first + i];
      if (!AllFinite(std::span(J.Column(j) + first, n))) return false;
    }
    return true;
  };
  return OverAllBlocks(compute);
}

// Widens or narrows the step until the change of the fit can be told from rounding and is still small.
bool WeightedResiduals::Difference(std::size_t j, std::vector<double>& a, double size, double* column) {
  const double centre = a[j], magnitude = std::abs(centre);
  const double widest = magnitude == 0 ? HUGE_VAL : std::max(0.01 * magnitude, 1e-4 * change_[j]);
  double h = kStep * (change_[j] > 0 ? change_[j] : magnitude > 0 ? magnitude : 1.0);
  bool found = false;
  // Who looks at a model from outside its bounds has no use for them.
  const bool inside = box_.Lower[j] <= centre && centre <= box_.Upper[j];
  for (int round = 0; round < 12; ++round) {
    // What the step becomes in the coefficient's own digits.
    const double up = inside ? std::min(centre + h, box_.Upper[j]) : centre + h;
    const double down = inside ? std::max(centre - h, box_.Lower[j]) : centre - h;
    a[j] = up;
    bool valued = up != down && Fitted(a, above_);
    a[j] = down;
    valued = valued && Fitted(a, below_);
    a[j] = centre;
    if (form_.Aborted) return false;
    if (!valued) {
      if (found) break;
      if (up == down) return false;
      // A scale from elsewhere leads astray; the coefficient's own size is where to begin.
      h = magnitude > 0 && h > kStep * magnitude ? kStep * magnitude : h * 0.01;
      continue;
    }
    const double width = up - down;
    for (std::size_t i = 0; i < above_.size(); ++i) above_[i] -= below_[i];
    const double changed = Norm(above_), part = size > 0 ? changed / size : 0;
    for (std::size_t i = 0; i < above_.size(); ++i) column[i] = above_[i] / width;
    found = AllFinite(std::span(column, above_.size()));
    change_[j] = part > 0 && std::isfinite(width / part) ? width / part : 0;
    if (part > kGreatestChange) {
      h *= std::max(kGoodChange / part, 1e-6);
    } else if (part < kLeastChange && h < widest) {
      h = std::min(widest, h * std::min(part > 0 ? kGoodChange / part : 1e4, 1e4));
    } else {
      break;
    }
  }
  return found;
}

}  // namespace quorvex
