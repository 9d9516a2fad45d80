#include "results/FitLimits.h"

#include <array>

namespace quorvex {

std::vector<BandKind> LimitsChoice::Kinds() const {
  std::vector<BandKind> kinds;
  if (Confidence) kinds.push_back(BandKind::Confidence);
  if (Prediction) kinds.push_back(BandKind::Prediction);
  return kinds;
}

Result<Bands> BandsOf(const SolvedItem& solution, const SolveData& data, DerivativeKind derivativeMethod) {
  if (solution.Model == nullptr) return Failure{kNoBandsOfInterpolation};
  SolveForm unattended;
  return Bands::Of(*solution.Model, data, derivativeMethod, unattended);
}

LimitColumns LimitsAtPoints(const SolvedItem& solution, const SolveData& data, const LimitsChoice& choice,
                            const std::function<void()>& pulse) {
  LimitColumns columns;
  if (!choice.Any()) return columns;
  const Result<Bands> bands = BandsOf(solution, data, choice.DerivativeMethod);
  std::array<double, kMostIndependentVariables> x;
  for (const BandKind kind : choice.Kinds()) {
    const std::string name = BandName(kind, choice.Level);
    columns.Headings.insert(columns.Headings.end(), {name + ", lower", name + ", upper"});
    std::vector<double> lower(data.N(), NAN), upper(data.N(), NAN);
    for (std::size_t i = 0; bands && i < data.N(); ++i) {
      if (i % 256 == 0) pulse();
      const Interval limits = bands->Limits(kind, choice.Level, *solution.Model, data.Point(i, x), data.sig[i]);
      lower[i] = limits.Lower;
      upper[i] = limits.Upper;
    }
    columns.Values.push_back(std::move(lower));
    columns.Values.push_back(std::move(upper));
  }
  return columns;
}

}  // namespace quorvex
