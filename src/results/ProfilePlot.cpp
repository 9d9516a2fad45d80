#include "results/ProfilePlot.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "functions/InverseTDistribution.h"
#include "results/ResultPlots.h"

namespace quorvex {
namespace {

constexpr std::int32_t kBlue = 0xFF0000, kRed = 0x0000FF, kGray = 0x808080;
constexpr int kDashed = 1, kDotted = 2;
constexpr int kPointsPerSide = 200;

using Column = std::vector<double>;

PlotSeries Line(const std::string& name, Column x, Column y, SeriesStyle style) {
  DataClass line;
  line.id = line.Description = name;
  line.GenerateTable({std::move(x)}, std::move(y));
  return {std::move(line), std::move(style)};
}

// What is shown of the coefficient: each side to beyond its limits, but not so far that the parabola can't be seen.
Interval Shown(const CoefficientDiagnosis& coefficient) {
  constexpr double kMostWidths = 10, kMargin = 1.1, kOpenMargin = 2;
  const double width = coefficient.Symmetric.back().Upper - coefficient.Value;
  const auto reach = [&](double Interval::*end) {
    double farthest = width, margin = kMargin;
    for (const Interval& limits : *coefficient.Profile) {
      const double distance = std::abs(limits.*end - coefficient.Value);
      if (distance <= kMostWidths * width)
        farthest = std::max(farthest, distance);
      else
        margin = kOpenMargin;
    }
    return margin * farthest;
  };
  return {coefficient.Value - reach(&Interval::Lower), coefficient.Value + reach(&Interval::Upper)};
}

// The part of an interval that the points reach over.
Interval Covered(const Interval& shown, const std::vector<ProfilePoint>& points) {
  return {std::max(shown.Lower, points.front().Value), std::min(shown.Upper, points.back().Value)};
}

// Tau between the points: a cubic from each to the next, monotone where they are. Method: F. N. Fritsch & J. Butland,
// SIAM J. Sci. Stat. Comput. 5, 1984.
class TauCurve {
 public:
  explicit TauCurve(const std::vector<ProfilePoint>& points) {
    for (const ProfilePoint& point : points)
      if (points_.empty() || point.Value > points_.back().Value) points_.push_back(point);
    for (std::size_t i = 0; i < points_.size(); ++i) {
      const double before = i > 0 ? Slope(i - 1) : Slope(i), after = i + 1 < points_.size() ? Slope(i) : before;
      const double width = i > 0 ? Width(i - 1) : 1, next = i + 1 < points_.size() ? Width(i) : width;
      const double share = (width + 2 * next) / (3 * (width + next));
      tangents_.push_back(before * after > 0 ? before * after / (share * after + (1 - share) * before) : 0);
    }
  }

  // Of a value between the first and the last point.
  double At(double value) const {
    const auto next = std::ranges::upper_bound(points_, value, {}, &ProfilePoint::Value);
    const auto i = static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(next - points_.begin() - 1, 0, Last() - 1));
    const double t = (value - points_[i].Value) / Width(i), u = 1 - t;
    return u * u * (1 + 2 * t) * points_[i].Tau + t * t * (1 + 2 * u) * points_[i + 1].Tau +
           t * u * Width(i) * (u * tangents_[i] - t * tangents_[i + 1]);
  }

 private:
  std::ptrdiff_t Last() const { return static_cast<std::ptrdiff_t>(points_.size()) - 1; }
  double Width(std::size_t i) const { return points_[i + 1].Value - points_[i].Value; }
  double Slope(std::size_t i) const {
    return i + 1 < points_.size() ? (points_[i + 1].Tau - points_[i].Tau) / Width(i) : 0;
  }

  std::vector<ProfilePoint> points_;
  std::vector<double> tangents_;
};

// The values of a curve over what is shown, as far as it doesn't rise too high. They stand closest about the best
// value, where a long side would else leave out the minimum.
template <typename Tau>
PlotSeries Rise(const std::string& name, double best, const Interval& shown, double most, Tau tau, SeriesStyle style) {
  Column x, y;
  for (int i = -kPointsPerSide; i <= kPointsPerSide; ++i) {
    const double part = static_cast<double>(i) / kPointsPerSide, end = i < 0 ? shown.Lower : shown.Upper;
    const double value = best + part * part * (end - best), root = tau(value);
    if (!(root * root <= most) || (!x.empty() && !(value > x.back()))) continue;
    x.push_back(value);
    y.push_back(root * root);
  }
  style.LegendText = name;
  return Line(name, std::move(x), std::move(y), std::move(style));
}

SeriesStyle ParabolaStyle() { return {.DrawStyle = kDashed, .DrawColor = kRed}; }

PlotSeries LevelLine(std::size_t level, const Interval& shown, double height) {
  return Line(std::to_string(kLimitLevels[level]) + "%", {shown.Lower, shown.Upper}, {height, height},
              {.DrawStyle = kDotted, .DrawColor = kGray});
}

PlotClass EmptyPlot(const std::string& title, const std::string& xTitle, const Settings& settings,
                    const LocaleText& locale) {
  PlotClass plot(settings, locale);
  plot.PlotTitle = title;
  plot.X.AxisTitle = xTitle;
  plot.Y.AxisTitle = "Rise of the Merit Function in Variances";
  return plot;
}

}  // namespace

Result<PlotClass> ProfilePlot(const CoefficientDiagnosis& coefficient, const Settings& settings,
                              const LocaleText& locale) {
  if (!coefficient.Profile || coefficient.Curve.Points.size() < 2 ||
      coefficient.Curve.Points.front().Value == coefficient.Curve.Points.back().Value || !(coefficient.StdErr > 0))
    return Failure{"There is no profile of " + coefficient.Name + "."};
  PlotClass plot = EmptyPlot("Profile of " + coefficient.Name, coefficient.Name, settings, locale);
  const Interval shown = Shown(coefficient);
  LimitsByLevel heights;  // of each level, twice
  for (std::size_t level = 0; level < kLimitLevels.size(); ++level) {
    const double quantile = (coefficient.Symmetric[level].Upper - coefficient.Value) / coefficient.StdErr;
    heights[level].Lower = heights[level].Upper = quantile * quantile;
  }
  const double most = 1.15 * heights.back().Upper;
  const TauCurve profile(coefficient.Curve.Points);
  plot.PlotData.push_back(Rise("Profile", coefficient.Value, Covered(shown, coefficient.Curve.Points), most,
                               [&](double value) { return profile.At(value); }, {.DrawWidth = 2, .DrawColor = kBlue}));
  plot.PlotData.push_back(Rise(
      "Parabola", coefficient.Value, shown, most,
      [&](double value) { return (value - coefficient.Value) / coefficient.StdErr; }, ParabolaStyle()));
  Column x, y;
  for (std::size_t level = 0; level < kLimitLevels.size(); ++level) {
    const double height = heights[level].Upper;
    plot.PlotData.push_back(LevelLine(level, shown, height));
    const Interval& limits = (*coefficient.Profile)[level];
    for (const double end : {limits.Lower, limits.Upper}) {
      if (!(end >= shown.Lower && end <= shown.Upper)) continue;
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

Result<PlotClass> ProfilesPlot(const ModelClass& model, const SolveData& data, const Settings& settings,
                               const LocaleText& locale, SolveForm& form) {
  const double deviation = model.ErrorDeviation();
  const ProfileScale scale{deviation * deviation, ConfidenceQuantiles(model.ErrorDegrees())};
  const auto profiled = ProfileCoefficients(model, data, scale, settings, form);
  if (!profiled) return Failure{"Aborted."};
  if (!profiled->Refusal.empty()) return Failure{"There is no profile of '" + model.id + "'. " + profiled->Refusal};
  PlotClass plot = EmptyPlot("Profiles", "Standard Errors from the Best Value", settings, locale);
  const double last = scale.Quantiles.back(), most = 1.15 * last * last;
  Interval all{-last, last};
  for (const CoefficientProfile& profile : profiled->Coefficients) {
    const double error = model.StandardError(profile.Coefficient);
    std::vector<ProfilePoint> points = profile.Curve.Points;
    for (ProfilePoint& point : points) point.Value = (point.Value - profile.Value) / error;
    std::erase_if(points, [](const ProfilePoint& point) { return !std::isfinite(point.Value); });
    if (points.size() < 2 || !(points.front().Value < points.back().Value)) continue;
    const TauCurve curve(points);
    const Interval shown = Covered({-2 * last, 2 * last}, points);
    SeriesStyle style{.DrawWidth = 2};
    TellApart(style, plot.PlotData.size());
    plot.PlotData.push_back(Rise(
        profile.Name, 0, shown, most, [&](double value) { return curve.At(value); }, style));
    all = {std::min(all.Lower, shown.Lower), std::max(all.Upper, shown.Upper)};
  }
  plot.PlotData.push_back(
      Rise("Parabola", 0, all, most, [](double value) { return value; }, {.DrawStyle = kDashed, .DrawColor = kGray}));
  for (std::size_t level = 0; level < kLimitLevels.size(); ++level)
    plot.PlotData.push_back(LevelLine(level, all, scale.Quantiles[level] * scale.Quantiles[level]));
  return plot;
}

}  // namespace quorvex
