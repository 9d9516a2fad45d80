#pragma once

#include <string>

#include "calculator/XRange.h"
#include "core/LocaleText.h"
#include "core/Result.h"
#include "core/Settings.h"
#include "plot/PlotSeries.h"

namespace quorvex {

// Curves that the calculator makes of what is entered. The fields are those of the dialogs, texts as typed in the
// user's locale; each fails with what is wrong with them, in the order in which they are checked.

// The most points that a curve is made of.
inline constexpr int kMostSamples = 65536;

// The density of a normal distribution over its mean, so many standard deviations to each side.
struct DistributionCurve {
  std::string StandardDeviation, Mean, Points, Range;

  Result<PlotSeries> Make(const LocaleText& locale) const;
};

// A typed expression in X over a range.
struct ExpressionCurve {
  std::string Function, Min, Max, Samples;

  Result<PlotSeries> Make(const LocaleText& locale) const;
};

// A model or an interpolation of a plot or a project at evenly spaced X, or at those that it was fitted to.
struct SampledCurve {
  std::string XMin, XMax, Samples;
  bool SampleFitted = false;

  // The whole range of its input, with as many points as a plot has.
  static SampledCurve Defaults(const PlotSeries& equation, const Settings& settings, const LocaleText& locale);

  Result<PlotSeries> Make(const PlotSeries& equation, const LocaleText& locale) const;
};

// The table of a model or an interpolation at `points` X over its input. Throws CalculatorFault where it has no value
// at one of them.
PlotSeries TableOf(const PlotSeries& equation, int points);

}  // namespace quorvex
