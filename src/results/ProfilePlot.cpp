#include "results/ProfilePlot.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "results/ResultPlots.h"

namespace quorvex {
namespace {

constexpr std::int32_t kBlue = 0xFF0000, kRed = 0x0000FF, kGray = 0x808080;
constexpr int kDashed = 1, kDotted = 2;
constexpr int kPointsPerCurve = 200;

using Column = std::vector<double>;

PlotSeries Line(const std::string& name, Column x, Column y, SeriesStyle style) {
  DataClass line;
  line.id = line.Description = name;
  line.GenerateTable({std::move(x)}, std::move(y));
  return {std::move(line), std::move(style)};
}

// What is shown of the coefficient.
Interval Shown(const CoefficientDiagnosis& coefficient) {
  const std::vector<ProfilePoint>& points = coefficient.Curve.Points;
  double farthest = 0;
  for (const LimitsByLevel* const limits : {&*coefficient.Profile, &coefficient.Symmetric})
    for (const Interval& each : *limits)
      for (const double end : {each.Lower, each.Upper})
        if (std::isfinite(end)) farthest = std::max(farthest, std::abs(end - coefficient.Value));
  Interval shown{points.front().Value, points.back().Value};
  if (farthest > 0) {
    shown.Lower = std::max(shown.Lower, coefficient.Value - 2 * farthest);
    shown.Upper = std::min(shown.Upper, coefficient.Value + 2 * farthest);
  }
  return shown;
}

// Tau runs nearly straight from point to point, which its square doesn't.
PlotSeries RiseCurve(const std::vector<ProfilePoint>& points, const Interval& shown, double most) {
  Column x, y;
  for (std::size_t i = 0, next = 0; i <= kPointsPerCurve; ++i) {
    const double part = static_cast<double>(i) / kPointsPerCurve;
    const double value = shown.Lower * (1 - part) + shown.Upper * part;
    while (next + 1 < points.size() && points[next].Value < value) ++next;
    const ProfilePoint &q = points[next], &p = next > 0 ? points[next - 1] : q;
    const double along = q.Value > p.Value ? (value - p.Value) / (q.Value - p.Value) : 1;
    const double tau = p.Tau + along * (q.Tau - p.Tau);
    if (tau * tau > most) continue;
    x.push_back(value);
    y.push_back(tau * tau);
  }
  return Line("Profile", std::move(x), std::move(y), {.LegendText = "Profile", .DrawWidth = 2, .DrawColor = kBlue});
}

PlotSeries Parabola(const CoefficientDiagnosis& coefficient, const Interval& shown, double most) {
  Column x, y;
  for (int i = 0; i <= kPointsPerCurve; ++i) {
    const double part = static_cast<double>(i) / kPointsPerCurve;
    const double value = shown.Lower * (1 - part) + shown.Upper * part;
    const double tau = (value - coefficient.Value) / coefficient.StdErr;
    if (!(tau * tau <= most)) continue;
    x.push_back(value);
    y.push_back(tau * tau);
  }
  return Line("Parabola", std::move(x), std::move(y),
              {.LegendText = "Parabola", .DrawStyle = kDashed, .DrawColor = kRed});
}

}  // namespace

Result<PlotClass> ProfilePlot(const CoefficientDiagnosis& coefficient, const Settings& settings,
                              const LocaleText& locale) {
  if (!coefficient.Profile || coefficient.Curve.Points.size() < 2 || !(coefficient.StdErr > 0))
    return Failure{"There is no profile of " + coefficient.Name + "."};
  PlotClass plot(settings, locale);
  plot.PlotTitle = "Profile of " + coefficient.Name;
  plot.X.AxisTitle = coefficient.Name;
  plot.Y.AxisTitle = "Rise of the Merit Function in Variances";

  const Interval shown = Shown(coefficient);
  LimitsByLevel heights;  // of each level, twice
  for (std::size_t level = 0; level < kLimitLevels.size(); ++level) {
    const double quantile = (coefficient.Symmetric[level].Upper - coefficient.Value) / coefficient.StdErr;
    heights[level].Lower = heights[level].Upper = quantile * quantile;
  }
  const double most = 1.15 * heights.back().Upper;
  plot.PlotData.push_back(RiseCurve(coefficient.Curve.Points, shown, most));
  plot.PlotData.push_back(Parabola(coefficient, shown, most));
  Column x, y;
  for (std::size_t level = 0; level < kLimitLevels.size(); ++level) {
    const double height = heights[level].Upper;
    plot.PlotData.push_back(Line(std::to_string(kLimitLevels[level]) + "%", {shown.Lower, shown.Upper},
                                 {height, height}, {.DrawStyle = kDotted, .DrawColor = kGray}));
    const Interval& limits = (*coefficient.Profile)[level];
    for (const double end : {limits.Lower, limits.Upper}) {
      if (!std::isfinite(end)) continue;
      x.push_back(end);
      y.push_back(height);
    }
  }
  if (x.empty()) return plot;
  DataClass limits;
  limits.GenerateTable({std::move(x)}, std::move(y));
  plot.PlotData.push_back(Markers("Limits (68, 90, 95, 99%)", std::move(limits), settings));
  return plot;
}

}  // namespace quorvex
