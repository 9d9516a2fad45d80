#include "analysis/LowessSmooth.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <functional>
#include <limits>

namespace quorvex {
namespace {

double Cube(double v) { return v * v * v; }
double Square(double v) { return v * v; }

// The points of one round, and its line at each x. Places are counted from 0.
class Round {
 public:
  Round(std::span<const double> x, std::span<const double> y, std::span<const double> rw)
      : x_(x), y_(y), rw_(rw), w_(x.size()), range_(x.back() - x.front()) {}

  // The value at x[i] of the line through the points from nleft to nright, and those to the right that tie with the
  // last. Nothing where all weights vanish.
  std::optional<double> LowestFit(std::size_t i, std::size_t nleft, std::size_t nright) {
    const double at = x_[i], h = std::max(at - x_[nleft], x_[nright] - at);
    const double h9 = 0.999 * h, h1 = 0.001 * h;
    double sum = 0;
    std::size_t end = nleft;
    for (; end < x_.size(); ++end) {
      const double r = std::abs(x_[end] - at);
      w_[end] = 0;
      if (r <= h9) {
        w_[end] = (r <= h1 ? 1 : Cube(1 - Cube(r / h))) * (rw_.empty() ? 1 : rw_[end]);
        sum += w_[end];
      } else if (x_[end] > at) {
        break;
      }
    }
    if (!(sum > 0)) return std::nullopt;
    double value = 0, centre = 0;  // of x, from the place of the line on, where subtraction is exact
    for (std::size_t j = nleft; j < end; ++j) {
      w_[j] /= sum;
      value += w_[j] * y_[j];
      centre += w_[j] * (x_[j] - at);
    }
    if (!(h > 0)) return value;
    // In units of the range, so that squares stay within what a double can hold.
    double spread = 0;
    for (std::size_t j = nleft; j < end; ++j) spread += w_[j] * Square((x_[j] - at - centre) / range_);
    if (std::sqrt(spread) <= 0.001) return value;
    const double slope = -centre / range_ / spread;
    for (std::size_t j = nleft; j < end; ++j) value += w_[j] * slope * ((x_[j] - at - centre) / range_) * y_[j];
    return value;
  }

 private:
  std::span<const double> x_, y_, rw_;  // no robustness weights in the first round
  std::vector<double> w_;
  double range_;
};

// Values between those of two fitted points, whose x differ.
void Interpolate(std::span<const double> x, std::size_t from, std::size_t to, std::vector<double>& ys) {
  const double length = x[to] - x[from];
  for (std::size_t j = from + 1; j < to; ++j) {
    const double part = (x[j] - x[from]) / length;
    ys[j] = part * ys[to] + (1 - part) * ys[from];
  }
}

// Six times the median of the magnitudes.
double SixMedians(const std::vector<double>& res) {
  std::vector<double> sizes(res.size());
  std::transform(res.begin(), res.end(), sizes.begin(), [](double r) { return std::abs(r); });
  const auto middle = sizes.begin() + static_cast<std::ptrdiff_t>(sizes.size() / 2);
  std::nth_element(sizes.begin(), middle, sizes.end());
  const double below = sizes.size() % 2 == 1 ? *middle : *std::max_element(sizes.begin(), middle);
  return 3 * (below + *middle);
}

// What rounding may leave of the residual of a line that goes through its point. Where most lines do, the median is of
// that kind, too, and chance would decide which points are outliers.
double RoundingOf(std::span<const double> y) {
  double largest = 0;
  for (const double v : y) largest = std::max(largest, std::abs(v));
  return 16 * std::numeric_limits<double>::epsilon() * largest;
}

double RobustnessWeight(double res, double cmad, double rounding) {
  const double r = std::abs(res);
  return r <= std::max(0.001 * cmad, rounding) ? 1 : r < 0.999 * cmad ? Square(1 - Square(r / cmad)) : 0;
}

bool AllFinite(std::span<const double> values) {
  return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
}

}  // namespace

std::optional<Smoothed> LowessSmooth(std::span<const double> x, std::span<const double> y, double f, int nsteps,
                                     double delta, const LongWork& work) {
  assert(x.size() == y.size() && f > 0 && nsteps >= 0);
  const std::size_t n = x.size();
  Smoothed smooth{{y.begin(), y.end()}, std::vector<double>(n, 1), std::vector<double>(n, 0)};
  if (!AllFinite(x) || !AllFinite(y)) return std::nullopt;
  if (n < 2) return smooth;
  if (!std::isfinite(x.back() - x.front())) return std::nullopt;
  const double count = static_cast<double>(n);
  const auto ns = static_cast<std::size_t>(std::clamp(std::trunc(count * f), 2.0, count));
  const std::size_t rounds = static_cast<std::size_t>(nsteps) + 1;
  const double rounding = RoundingOf(y);
  std::vector<double>& ys = smooth.ys;
  for (std::size_t round = 0; round < rounds; ++round) {
    Round points(x, y, round == 0 ? std::span<const double>() : smooth.rw);
    std::size_t nleft = 0, nright = ns - 1, last = 0;
    for (std::size_t i = 0; last + 1 < n;) {
      if (work.Cancelled()) return std::nullopt;
      work.ShowProgress(round * n + i, rounds * n);
      while (nright + 1 < n && x[i] - x[nleft] > x[nright + 1] - x[i]) ++nleft, ++nright;
      ys[i] = points.LowestFit(i, nleft, nright).value_or(y[i]);
      if (last + 1 < i) Interpolate(x, last, i, ys);
      last = i;
      const double cut = x[last] + delta;
      std::size_t next = last + 1;
      for (; next < n && x[next] <= cut; ++next)
        if (x[next] == x[last]) {
          ys[next] = ys[last];
          last = next;
        }
      // The last one within delta, so that no gap between two fits is wider, and the last point of all is fitted.
      i = std::max(last + 1, next - 1);
    }
    std::transform(y.begin(), y.end(), ys.begin(), smooth.res.begin(), std::minus<>());
    const double cmad = SixMedians(smooth.res);
    if (!AllFinite(smooth.res) || !std::isfinite(cmad)) return std::nullopt;
    std::transform(smooth.res.begin(), smooth.res.end(), smooth.rw.begin(),
                   [&](double r) { return RobustnessWeight(r, cmad, rounding); });
  }
  return smooth;
}

double LowessDelta(std::span<const double> x) {
  constexpr std::size_t kMostFittedEach = 5000;
  return x.size() > kMostFittedEach ? std::abs(x.back() - x.front()) / 50 : 0;
}

}  // namespace quorvex
