#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/DerivativeKind.h"
#include "core/LocaleText.h"
#include "core/SolveData.h"
#include "diagnosis/Bands.h"
#include "solve/SolvedList.h"

namespace quorvex {

// The limits of a model's values that the user asks for beside them.
struct LimitsChoice {
  bool Confidence = false, Prediction = false;
  std::size_t Level = kBandLevel;                                // its place in kLimitLevels
  DerivativeKind DerivativeMethod = DerivativeKind::Richardson;  // of the settings

  bool Any() const { return Confidence || Prediction; }
  BandKind Kind() const { return static_cast<BandKind>((Confidence ? 1 : 0) + (Prediction ? 2 : 0)); }
  std::vector<BandKind> Kinds() const;  // one by one, in the order that tables have them
};

// The bands of an entry of the solved list, fitted to the data. Fails with a sentence where it has none.
Result<Bands> BandsOf(const SolvedItem& solution, const SolveData& data, DerivativeKind derivativeMethod);

// Two columns for each kind of limits, with a value a point, by its own weight; NaN where there are none.
struct LimitColumns {
  std::vector<std::string> Headings;  // "95% confidence, lower"
  std::vector<std::vector<double>> Values;
};
// `pulse` is called every few hundred points, and may throw.
LimitColumns LimitsAtPoints(
    const SolvedItem& solution, const SolveData& data, const LimitsChoice& choice,
    const std::function<void()>& pulse = [] {});

}  // namespace quorvex
