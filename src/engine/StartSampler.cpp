#include "engine/StartSampler.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "functions/Elementary.h"

namespace quorvex {
namespace {

double Logarithmic(double u, double low, double high) { return low * Power(high / low, u); }

// Takes the part `share` of what u may be: whether u is in it. u is then its place within the part, or within the rest.
bool Share(double& u, double share) {
  if (u < share) {
    u /= share;
    return true;
  }
  u = (u - share) / (1 - share);
  return false;
}

// One of the values, the first ones more often, up to a factor of 1.5 from it.
double OneOf(const std::vector<double>& values, double u) {
  double share = 0.4;
  for (std::size_t k = 0; k + 1 < values.size(); ++k)
    if (Share(u, share)) return values[k] * Logarithmic(u, 0.67, 1.5);
  return values.back() * Logarithmic(u, 0.67, 1.5);
}

double PureNumber(double u) {
  double sign = 1;
  if (Share(u, 0.45)) {
    if (Share(u, 0.2)) sign = -1;
    return sign * Logarithmic(u, 0.1, 10);
  }
  if (Share(u, 0.6)) return 10 * u - 5;
  if (Share(u, 0.2)) sign = -1;
  return sign * Logarithmic(u, 0.001, 1000);
}

// A length along a variable.
double LengthAlong(const VariableFeatures& x, double power, double u) {
  // The frequencies of oscillations, and their periods.
  if (std::abs(power) == 1 && !x.Frequencies.empty() && Share(u, 0.2)) {
    const double whole = Share(u, 0.5) ? 1 : 1 / (2 * kPi);
    std::vector<double> frequencies = x.Frequencies;
    double share = 0.5;
    for (std::size_t k = 0; k + 1 < frequencies.size(); ++k)
      if (Share(u, share)) return 1 / (frequencies[k] * whole * (0.9 + 0.2 * u));
    return 1 / (frequencies.back() * whole * (0.9 + 0.2 * u));
  }
  if (power > 0 && !x.Widths.empty() && Share(u, 0.25)) return OneOf(x.Widths, u);
  if (Share(u, 0.2)) return Logarithmic(u, x.Range, 30 * x.Magnitude);
  return Logarithmic(u, x.Spacing / 2, 3 * x.Range);
}

double InUnits(const CoefficientRole& role, const DataFeatures& features, double u, SeededRandom& random) {
  const double sign = Share(u, 0.2) ? -1 : 1;
  double value = 1;
  bool first = true;
  const auto part = [&] {  // the first factor has the strata of the hypercube
    const double mine = first ? u : random.Uniform();
    first = false;
    return mine;
  };
  for (std::size_t v = 0; v < role.XPower.size(); ++v)
    if (role.XPower[v] != 0) value *= Power(LengthAlong(features.X[v], role.XPower[v], part()), role.XPower[v]);
  if (role.YPower != 0) value *= Power(features.YRange * Logarithmic(part(), 0.1, 10), role.YPower);
  return sign * value;
}

double Place(const VariableFeatures& x, double sign, double u) {
  for (const std::vector<double>* places : {&x.Places, &x.OtherPlaces}) {
    if (places->empty() || !Share(u, places == &x.Places ? 0.25 : 0.1)) continue;
    for (std::size_t k = 0; k + 1 < places->size(); ++k)
      if (Share(u, 0.4)) return sign * (*places)[k];
    return sign * places->back();
  }
  if (Share(u, 0.2)) {
    const double away = Logarithmic(u, x.Spacing, 10 * x.Magnitude);
    return sign * (x.Least - away);
  }
  return sign * (x.Least + u * (x.Greatest - x.Least));
}

bool HasUnit(const CoefficientRole& role) {
  return role.YPower != 0 || std::ranges::any_of(role.XPower, [](double power) { return power != 0; });
}

double Draw(CoefficientRole role, const DataFeatures& features, double u, SeededRandom& random) {
  if (!role.UnitKnown && role.PlaceOf < 0) {
    const std::size_t v = random.Below(features.X.size());
    if (Share(u, 0.2)) return Place(features.X[v], 1, u);
    if (Share(u, 0.3)) return PureNumber(u);
    role.XPower.assign(features.X.size(), 0.0);
    role.YPower = static_cast<double>(random.Below(3)) - 1;
    role.XPower[v] = static_cast<double>(random.Below(3)) - 1;
  }
  if (role.PlaceOf >= 0 && Share(u, 0.85))
    return Place(features.X[static_cast<std::size_t>(role.PlaceOf)], role.PlaceSign, u);
  return HasUnit(role) ? InUnits(role, features, u, random) : PureNumber(u);
}

// The places that the points show, dealt out so that no two coefficients have the same.
void DealPlaces(const std::vector<CoefficientRole>& roles, const DataFeatures& features, std::vector<double>& a,
                SeededRandom& random) {
  const auto alongFirst = [](const CoefficientRole& role) { return role.PlaceOf == 0; };
  const auto wanted = static_cast<std::size_t>(std::ranges::count_if(roles, alongFirst));
  const VariableFeatures& x = features.X[0];
  std::vector<double> places = x.Places;
  // Peaks alone, dips alone, or both.
  const double kind = random.Uniform();
  if (kind < 0.15) places = x.OtherPlaces;
  if (kind >= 0.8) places.insert(places.end(), x.OtherPlaces.begin(), x.OtherPlaces.end());
  if (wanted == 0 || wanted > places.size()) return;
  // The most prominent ones alone, or some of twice as many.
  places.resize(std::min(places.size(), random.Uniform() < 0.5 ? wanted : 2 * wanted));
  random.Shuffle(places);
  std::size_t next = 0;
  for (std::size_t j = 0; j < roles.size(); ++j)
    if (alongFirst(roles[j])) a[j] = roles[j].PlaceSign * places[next++];
}

}  // namespace

std::vector<std::vector<double>> StartsByData(const std::vector<CoefficientRole>& roles, const DataFeatures& features,
                                              std::size_t count, SeededRandom& random) {
  std::vector<std::vector<double>> starts(count, std::vector<double>(roles.size(), 1.0));
  std::vector<std::size_t> strata(count);
  for (std::size_t j = 0; j < roles.size(); ++j) {
    if (roles[j].Linear) continue;
    std::iota(strata.begin(), strata.end(), std::size_t{0});
    random.Shuffle(strata);
    for (std::size_t i = 0; i < count; ++i) {
      const double u = (static_cast<double>(strata[i]) + random.Uniform()) / static_cast<double>(count);
      starts[i][j] = Draw(roles[j], features, u, random);
    }
  }
  for (std::vector<double>& a : starts) {
    if (random.Uniform() < 0.5) DealPlaces(roles, features, a, random);
    for (std::size_t j = 0; j < roles.size(); ++j) {
      const CoefficientRole& role = roles[j];
      if (role.FollowsWith < 0 || random.Uniform() < 0.2) continue;
      const double t = random.Between(features.X[0].Least, features.X[0].Greatest);
      const double shift = role.Shift * t * a[static_cast<std::size_t>(role.FollowsWith)];
      if (role.Grows)
        a[j] = (a[j] < 0 ? -1 : 1) * Exp(std::clamp(shift, -600.0, 600.0));
      else
        a[j] = shift;
    }
  }
  return starts;
}

std::vector<std::vector<double>> StartsAround(const std::vector<double>& a, std::size_t count, SeededRandom& random) {
  std::vector<std::vector<double>> starts(count, a);
  for (std::size_t j = 0; j < a.size(); ++j)
    for (std::size_t i = 0; i < count; ++i) {
      const double value = a[j] == 0 ? 1 : a[j];
      starts[i][j] = (random.Uniform() < 0.25 ? -value : value) * Power(10, random.Between(-3, 3));
    }
  return starts;
}

void BringInside(std::vector<std::vector<double>>& starts, const Box& box, SeededRandom& random) {
  for (std::vector<double>& a : starts) {
    for (std::size_t j = 0; j < a.size(); ++j) {
      const double least = box.Lower[j], most = box.Upper[j];
      if (least <= a[j] && a[j] <= most) continue;
      if (!std::isfinite(least) || !std::isfinite(most)) {
        const double bound = std::isfinite(least) ? least : most;
        a[j] = bound + (bound - a[j]);
      } else if (least > 0 ? most > 100 * least : least < 100 * most && most < 0) {
        a[j] = least * Power(most / least, random.Uniform());
      } else {
        a[j] = random.Between(least, most);
      }
    }
    box.BringInside(a);
  }
}

}  // namespace quorvex
