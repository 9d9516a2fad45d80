#include "engine/DataFeatures.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "functions/Elementary.h"

namespace quorvex {
namespace {

constexpr std::size_t kMostPlaces = 8, kMostFrequencies = 4;
constexpr std::size_t kMostForPeriodogram = 400;

std::vector<std::size_t> OrderByX(const SolveData& data) {
  std::vector<std::size_t> order(data.N());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::stable_sort(order, [&](std::size_t a, std::size_t b) { return data.X[0][a] < data.X[0][b]; });
  return order;
}

struct Extreme {
  double Place, Width, Prominence;
};

// The means of 2 * half + 1 neighbours.
std::vector<double> Smoothed(const std::vector<double>& y, std::size_t half) {
  std::vector<double> smooth(y.size());
  for (std::size_t i = 0; i < y.size(); ++i) {
    const std::size_t first = i < half ? 0 : i - half, last = std::min(i + half, y.size() - 1);
    double sum = 0;
    for (std::size_t k = first; k <= last; ++k) sum += y[k] / static_cast<double>(last - first + 1);
    smooth[i] = sum;
  }
  return smooth;
}

// Adds the peaks of y. One within another's width, from another smoothing, is the same.
void AddPeaks(const std::vector<double>& x, const std::vector<double>& y, std::vector<Extreme>& found) {
  const std::size_t n = y.size();
  for (std::size_t i = 1; i + 1 < n; ++i) {
    if (!(y[i] > y[i - 1] && y[i] >= y[i + 1])) continue;
    std::size_t left = i, right = i;
    double leftLow = y[i], rightLow = y[i];
    while (left > 0 && y[left - 1] <= y[i]) leftLow = std::min(leftLow, y[--left]);
    while (right + 1 < n && y[right + 1] <= y[i]) rightLow = std::min(rightLow, y[++right]);
    const double prominence = y[i] - std::max(leftLow, rightLow), half = y[i] - prominence / 2;
    left = right = i;
    while (left > 0 && y[left] > half) --left;
    while (right + 1 < n && y[right] > half) ++right;
    const Extreme peak{x[i], (x[right] - x[left]) / 2, prominence};
    const auto same = std::ranges::find_if(found, [&](const Extreme& other) {
      return std::abs(other.Place - peak.Place) <= std::min(other.Width, peak.Width);
    });
    if (same == found.end())
      found.push_back(peak);
    else if (same->Prominence < peak.Prominence)
      *same = peak;
  }
}

void FindPlaces(const std::vector<double>& x, const std::vector<double>& y, VariableFeatures& features) {
  std::vector<Extreme> peaks, dips;
  for (const std::size_t half : {std::size_t{0}, y.size() / 100, y.size() / 30}) {
    std::vector<double> smooth = Smoothed(y, half);
    AddPeaks(x, smooth, peaks);
    for (double& value : smooth) value = -value;
    AddPeaks(x, smooth, dips);
  }
  for (std::vector<Extreme>* found : {&peaks, &dips}) {
    std::ranges::stable_sort(*found, [](const Extreme& a, const Extreme& b) { return a.Prominence > b.Prominence; });
    found->resize(std::min(found->size(), kMostPlaces));
  }
  if (peaks.empty() || (!dips.empty() && dips[0].Prominence > peaks[0].Prominence)) peaks.swap(dips);
  for (const Extreme& extreme : peaks) features.Places.push_back(extreme.Place);
  for (const Extreme& extreme : dips) features.OtherPlaces.push_back(extreme.Place);
  for (const std::vector<Extreme>* found : {&peaks, &dips})
    for (const Extreme& extreme : *found) features.Widths.push_back(std::max(extreme.Width, features.Spacing));
}

void FindFrequencies(const std::vector<double>& x, const std::vector<double>& y, VariableFeatures& features) {
  const std::size_t n = y.size();
  const std::size_t step = n / kMostForPeriodogram + 1;
  std::vector<double> t, v;
  for (std::size_t i = 0; i < n; i += step) t.push_back((x[i] - features.Least) / features.Range), v.push_back(y[i]);
  const double count = static_cast<double>(t.size());
  double st = 0, sv = 0, stt = 0, stv = 0;
  for (std::size_t i = 0; i < t.size(); ++i) st += t[i], sv += v[i];
  for (std::size_t i = 0; i < t.size(); ++i) {
    stt += (t[i] - st / count) * (t[i] - st / count);
    stv += (t[i] - st / count) * (v[i] - sv / count);
  }
  if (stt == 0) return;
  for (std::size_t i = 0; i < t.size(); ++i) v[i] -= sv / count + stv / stt * (t[i] - st / count);
  // Four times as dense as independent frequencies stand, from half a period within the range to two points a period.
  std::vector<double> power;
  const auto omegaOf = [](std::size_t k) { return 2 * kPi * (0.5 + 0.25 * static_cast<double>(k)); };
  for (std::size_t k = 0; k < 2 * t.size(); ++k) {
    double c = 0, s = 0, cc = 0, ss = 0, cs = 0;
    for (std::size_t i = 0; i < t.size(); ++i) {
      const double cosine = Cos(omegaOf(k) * t[i]), sine = Sin(omegaOf(k) * t[i]);
      c += v[i] * cosine, s += v[i] * sine;
      cc += cosine * cosine, ss += sine * sine, cs += cosine * sine;
    }
    const double determinant = cc * ss - cs * cs;
    power.push_back(determinant > 1e-6 * cc * ss ? (c * c * ss - 2 * c * s * cs + s * s * cc) / determinant : 0);
  }
  std::vector<std::size_t> peaks;
  for (std::size_t k = 0; k < power.size(); ++k)
    if ((k == 0 || power[k] > power[k - 1]) && (k + 1 == power.size() || power[k] >= power[k + 1])) peaks.push_back(k);
  std::ranges::stable_sort(peaks, [&](std::size_t a, std::size_t b) { return power[a] > power[b]; });
  for (std::size_t m = 0; m < std::min(peaks.size(), kMostFrequencies); ++m)
    features.Frequencies.push_back(omegaOf(peaks[m]) / features.Range);
}

}  // namespace

DataFeatures FindFeatures(const SolveData& data) {
  DataFeatures features;
  for (const std::vector<double>& column : data.X) {
    VariableFeatures v;
    std::vector<double> sorted = column;
    std::ranges::sort(sorted);
    v.Least = sorted.front();
    v.Greatest = sorted.back();
    v.Magnitude = std::max(std::abs(v.Least), std::abs(v.Greatest));
    if (v.Magnitude == 0) v.Magnitude = 1;
    v.Range = v.Greatest > v.Least ? v.Greatest - v.Least : v.Magnitude;
    v.Spacing = v.Range;
    for (std::size_t i = 1; i < sorted.size(); ++i)
      if (sorted[i] > sorted[i - 1]) v.Spacing = std::min(v.Spacing, sorted[i] - sorted[i - 1]);
    v.Spacing = std::max(v.Spacing, v.Range * 1e-4);
    features.X.push_back(std::move(v));
  }
  const auto [low, high] = std::ranges::minmax_element(data.Y);
  features.YMagnitude = std::max({std::abs(*low), std::abs(*high)});
  if (features.YMagnitude == 0) features.YMagnitude = 1;
  features.YRange = *high > *low ? *high - *low : features.YMagnitude;
  if (data.X.size() != 1) return features;

  std::vector<double> x, y;
  for (const std::size_t i : OrderByX(data)) {
    x.push_back(data.X[0][i]);
    y.push_back(data.Y[i] / features.YMagnitude);  // in range when squared
  }
  FindPlaces(x, y, features.X[0]);
  FindFrequencies(x, y, features.X[0]);
  return features;
}

SolveData Thinned(const SolveData& data, std::size_t most) {
  if (data.N() <= most) return data;
  const std::vector<std::size_t> order = OrderByX(data);
  std::vector<std::size_t> kept;
  for (std::size_t k = 0; k + 2 < most; ++k) kept.push_back(order[k * data.N() / (most - 2)]);
  const auto [low, high] = std::ranges::minmax_element(data.Y);
  for (const auto extreme : {low, high}) {
    const auto at = static_cast<std::size_t>(extreme - data.Y.begin());
    if (std::ranges::find(kept, at) == kept.end()) kept.push_back(at);
  }
  SolveData thinned;
  thinned.X.resize(data.X.size());
  for (const std::size_t i : kept) {
    for (std::size_t v = 0; v < data.X.size(); ++v) thinned.X[v].push_back(data.X[v][i]);
    thinned.Y.push_back(data.Y[i]);
    thinned.SD.push_back(data.SD[i]);
    thinned.sig.push_back(data.sig[i]);
  }
  return thinned;
}

}  // namespace quorvex
