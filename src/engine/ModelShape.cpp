#include "engine/ModelShape.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>

#include "core/SolveData.h"
#include "engine/LinearPart.h"
#include "engine/ModelClass.h"
#include "engine/SeededRandom.h"
#include "engine/WeightedResiduals.h"
#include "functions/Elementary.h"

namespace quorvex {
namespace {

constexpr std::size_t kProbePoints = 48;
constexpr int kPlaces = 9;          // at which coefficients are looked at
constexpr int kAttempts = 40;       // to find places where the model has values
constexpr double kStep = 6.055e-6;  // cube root of the rounding of doubles

SolveData Weightless(std::vector<std::vector<double>> X) {
  const std::size_t n = X[0].size();
  return {std::move(X), std::vector<double>(n, 0.5), std::vector<double>(n, 1.0), std::vector<double>(n, 1.0)};
}

// Points of the order of 1, in no order that two variables share.
SolveData PointsNearOne(std::size_t variables, SeededRandom& random) {
  std::vector<std::vector<double>> X(variables, std::vector<double>(kProbePoints));
  for (std::vector<double>& column : X)
    for (double& x : column) x = Power(25, random.Uniform()) / 5;
  return Weightless(std::move(X));
}

// Points of the data, for a model that has no values elsewhere.
SolveData PointsOfData(const SolveData& data) {
  std::vector<std::vector<double>> X(data.X.size());
  const std::size_t n = std::min(kProbePoints, data.N());
  for (std::size_t v = 0; v < X.size(); ++v)
    for (std::size_t i = 0; i < n; ++i) X[v].push_back(data.X[v][i * data.N() / n]);
  return Weightless(std::move(X));
}

class Probe {
 public:
  Probe(ModelClass& model, SolveData points, SeededRandom& random, SolveForm& form)
      : model_(model), points_(std::move(points)), random_(random), form_(form), at_(model, points_, form) {}

  bool HasValues() {
    for (int attempt = 0; attempt < kAttempts; ++attempt)
      if (Fitted(Place(attempt), f_)) return true;
    return false;
  }

  std::vector<bool> FindLinear() {
    std::vector<bool> linear(at_.FreeCount(), false);
    for (std::size_t j = 0; j < linear.size(); ++j) {
      linear[j] = true;
      linear[j] = Halfway(linear);
    }
    return linear;
  }

  void FindUnits(std::vector<CoefficientRole>& roles);

 private:
  bool Fitted(const std::vector<double>& a, std::vector<double>& f) { return at_.Fitted(a, f); }

  // Coefficients of the order of 1: positive ones first, since most models have a value there.
  std::vector<double> Place(int attempt) {
    std::vector<double> a(at_.FreeCount());
    for (double& value : a) {
      value = Power(16, random_.Uniform()) / 4;
      if (attempt % 2 == 1 && random_.Uniform() < 0.5) value = -value;
    }
    return a;
  }

  // Whether the model is halfway between its values where these coefficients are halfway between theirs, also far away.
  bool Halfway(const std::vector<bool>& among) {
    int places = 0;
    bool matters = false;
    for (int attempt = 0; attempt < kAttempts && places < 3; ++attempt) {
      std::vector<double> a = Place(attempt), b = a, middle = a;
      if (!Fitted(a, f_)) continue;
      ++places;
      for (const double size : {1.0, 100.0, 1e4}) {
        for (std::size_t j = 0; j < a.size(); ++j) {
          if (!among[j]) continue;
          b[j] = size * random_.Between(-2, 2);
          middle[j] = a[j] + (b[j] - a[j]) / 2;
        }
        // What has values here and none far away bends in between.
        if (!Fitted(a, f_) || !Fitted(b, g_) || !Fitted(middle, h_)) return false;
        const double scale = std::max(Norm(f_), Norm(g_));
        for (std::size_t i = 0; i < f_.size(); ++i) {
          matters = matters || f_[i] != g_[i];
          h_[i] -= f_[i] + (g_[i] - f_[i]) / 2;
        }
        if (!(Norm(h_) <= 1e-11 * scale)) return false;
      }
    }
    return places > 0 && matters;
  }

  // Derivatives at one place: by the coefficients, and by each variable as it is and times the variable.
  struct Slopes {
    std::vector<double> a, f;
    ColumnMatrix ByCoefficient;
    std::vector<std::vector<double>> ByX, ByLogX;
  };

  std::optional<Slopes> SlopesAt(std::vector<double> a) {
    Slopes slopes;
    if (!Fitted(a, slopes.f) || !at_.Derivatives(a, slopes.ByCoefficient)) return std::nullopt;
    slopes.a = a;
    for (std::size_t v = 0; v < points_.X.size(); ++v) {
      SolveData above = points_, below = points_;
      for (double& x : above.X[v]) x *= 1 + kStep;
      for (double& x : below.X[v]) x *= 1 - kStep;
      if (!WeightedResiduals(model_, above, form_).Fitted(a, g_)) return std::nullopt;
      if (!WeightedResiduals(model_, below, form_).Fitted(a, h_)) return std::nullopt;
      std::vector<double> byX(f_.size()), byLogX(f_.size());
      byX.resize(g_.size());
      byLogX.resize(g_.size());
      for (std::size_t i = 0; i < g_.size(); ++i) {
        byLogX[i] = (g_[i] - h_[i]) / (2 * kStep);
        byX[i] = points_.X[v][i] != 0 ? byLogX[i] / points_.X[v][i] : 0;
      }
      slopes.ByX.push_back(std::move(byX));
      slopes.ByLogX.push_back(std::move(byLogX));
    }
    return slopes;
  }

  // The numbers that make sum of number * derivative by the coefficient, times the coefficient where `relative`, equal
  // to `wanted`, beside any combination of the linear ones. Nothing where there are none.
  static std::optional<std::vector<double>> Combine(const Slopes& slopes, const std::vector<CoefficientRole>& roles,
                                                    const std::vector<double>& wanted, bool relative) {
    ColumnMatrix A = slopes.ByCoefficient;
    for (std::size_t j = 0; j < roles.size(); ++j)
      if (relative && !roles[j].Linear)
        for (std::size_t i = 0; i < A.Rows(); ++i) A(i, j) *= slopes.a[j];
    // What the slope is made of to rounding alone is none: the model doesn't know this variable.
    if (Norm(wanted) <= 1e-8 * Norm(slopes.f)) return std::vector<double>(roles.size(), 0.0);
    const auto solved = SolveLeastSquares(std::move(A), wanted, 1e-10);
    if (!solved || solved->Remainder > 1e-6) return std::nullopt;
    return solved->z;
  }

  ModelClass& model_;
  SolveData points_;
  SeededRandom& random_;
  SolveForm& form_;
  WeightedResiduals at_;
  std::vector<double> f_, g_, h_;
};

// The number that most of a list are near, or nothing.
std::optional<double> Common(const std::vector<double>& values, double within) {
  std::vector<double> sorted = values;
  std::ranges::sort(sorted);
  if (sorted.size() < 2) return std::nullopt;
  const double median = sorted[sorted.size() / 2];
  const auto near = std::ranges::count_if(
      sorted, [&](double value) { return std::abs(value - median) <= within * std::max(std::abs(median), 1.0); });
  return 3 * static_cast<std::size_t>(near) >= 2 * sorted.size() ? std::optional(median) : std::nullopt;
}

void Probe::FindUnits(std::vector<CoefficientRole>& roles) {
  std::vector<Slopes> places;
  for (int attempt = 0; attempt < kAttempts && places.size() < kPlaces; ++attempt)
    if (auto slopes = SlopesAt(Place(attempt))) places.push_back(std::move(*slopes));
  if (places.size() < 2) return;
  const std::size_t variables = points_.X.size(), n = roles.size();
  for (CoefficientRole& role : roles) {
    role.UnitKnown = true;
    role.XPower.assign(variables, 0.0);
  }
  // powers[place][coefficient], by the places that have a combination; none where most don't.
  const auto powers = [&](const auto& wanted, bool relative) {
    std::vector<std::vector<double>> all;
    for (const Slopes& slopes : places)
      all.push_back(Combine(slopes, roles, wanted(slopes), relative).value_or(std::vector<double>()));
    const auto without = std::ranges::count_if(all, &std::vector<double>::empty);
    if (3 * static_cast<std::size_t>(without) > all.size()) all.clear();
    return all;
  };
  const auto column = [](const std::vector<std::vector<double>>& all, std::size_t j) {
    std::vector<double> values;
    for (const auto& row : all)
      if (!row.empty()) values.push_back(row[j]);
    return values;
  };
  for (std::size_t v = 0; v < variables; ++v) {
    // x df/dx = - sum of power * a df/da, as f stays where x grows by the factor and a by its power.
    const auto units = powers([&](const Slopes& slopes) { return slopes.ByLogX[v]; }, true);
    for (std::size_t j = 0; j < n; ++j) {
      const std::optional<double> power = units.empty() ? std::nullopt : Common(column(units, j), 0.02);
      if (!power) roles[j].UnitKnown = false;
      roles[j].XPower[v] = power ? -std::round(2 * *power) / 2 : 0.0;
    }
    const auto shifts = powers([&](const Slopes& slopes) { return slopes.ByX[v]; }, false);
    if (shifts.empty()) continue;
    for (std::size_t j = 0; j < n; ++j) {
      CoefficientRole& role = roles[j];
      if (role.Linear || role.PlaceOf >= 0) continue;
      const std::vector<double> values = column(shifts, j);
      const std::optional<double> same = Common(values, 1e-3);
      if (same && std::abs(std::abs(*same) - 1) < 1e-3) {
        role.PlaceOf = static_cast<int>(v);
        role.PlaceSign = *same < 0 ? 1 : -1;
        continue;
      }
      // What has a unit has its own scale, and a shift that can be undone in part alone is none.
      if ((same && std::abs(*same) < 1e-3) || role.XPower[v] != 0) continue;
      for (std::size_t k = 0; k < n && role.FollowsWith < 0; ++k) {
        if (k == j || roles[k].Linear) continue;
        for (const bool grows : {false, true}) {
          std::vector<double> ratios;
          for (std::size_t m = 0; m < places.size(); ++m)
            if (!shifts[m].empty()) ratios.push_back(shifts[m][j] / places[m].a[k] / (grows ? places[m].a[j] : 1));
          const std::optional<double> ratio = Common(ratios, 1e-3);
          if (!ratio || std::abs(*ratio) < 0.01) continue;
          role.FollowsWith = static_cast<int>(k);
          role.Shift = -*ratio;
          role.Grows = grows;
          break;
        }
      }
    }
  }
  // Where linear coefficients take the unit of Y, the others are free of it.
  if (std::ranges::any_of(roles, &CoefficientRole::Linear)) return;
  const auto units = powers([](const Slopes& slopes) { return slopes.f; }, true);
  for (std::size_t j = 0; j < n; ++j) {
    const std::optional<double> power = units.empty() ? std::nullopt : Common(column(units, j), 0.02);
    if (!power) roles[j].UnitKnown = false;
    roles[j].YPower = power ? std::round(2 * *power) / 2 : 0.0;
    if (roles[j].YPower != 0) roles[j].FollowsWith = -1;
  }
}

}  // namespace

std::vector<CoefficientRole> FindRoles(ModelClass& model, const SolveData& data, SeededRandom& random,
                                       SolveForm& form) {
  auto probe = std::make_unique<Probe>(model, PointsNearOne(data.X.size(), random), random, form);
  if (!probe->HasValues()) probe = std::make_unique<Probe>(model, PointsOfData(data), random, form);
  const std::vector<bool> linear = probe->FindLinear();
  std::vector<CoefficientRole> roles(linear.size());
  for (std::size_t j = 0; j < roles.size(); ++j) {
    roles[j].Linear = linear[j];
    roles[j].XPower.assign(data.X.size(), 0.0);
  }
  probe->FindUnits(roles);
  return roles;
}

}  // namespace quorvex
