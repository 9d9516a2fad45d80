#include "diagnosis/ModelBreaks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <string_view>

#include "core/Limits.h"
#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "equation/Expression.h"

namespace quorvex {
namespace {

constexpr std::size_t kMostValues = 200000, kMostBetween = 15;
constexpr double kVisible = 1e-6, kCounts = 0.01;  // of the range of Y
constexpr double kSmooth = 0.6;  // what second differences fall below where a curve is no worse than kinked
constexpr int kHalvings = 40;

// Whether whoever wrote the model wanted it to jump: by conditions, comparisons or whole numbers.
bool JumpsOnPurpose(const Expression& text) {
  constexpr std::string_view kSteps[] = {"int", "fix", "floor", "ceil", "sgn"};
  return std::ranges::any_of(text.ExprTokens, [&](const ExprToken& token) {
    if (token.Type == TokenKind::Binary)
      return token.Code == kIntegerDivide || token.Code == kMod ||
             (token.Code >= kEqual && token.Code <= kGreaterOrEqual);
    return token.Type == TokenKind::Function &&
           (token.Code == kIfCode ||
            std::ranges::any_of(kSteps, [&](std::string_view name) { return EqualNoCase(token.Name, name); }));
  });
}

// Values of the model at X, NaN where it has none.
std::vector<double> ValuesOf(ModelClass& model, const std::vector<double>& x, SolveForm& form) {
  std::vector<double> y(x.size(), NAN);
  const std::vector<std::vector<double>> columns = {x};
  for (std::size_t first = 0; first < x.size() && !form.Aborted; first += kBlock) {
    form.Pulse();
    const std::size_t n = std::min(kBlock, x.size() - first);
    if (model.EvaluateBlock(columns, first, n, &y[first])) continue;
    for (std::size_t i = first; i < first + n; ++i) {
      double value = NAN;
      bool ok = false;
      try {
        ok = model.Evaluate(std::span(&x[i], 1), value);
      } catch (const NumericFault&) {
      }
      y[i] = ok && std::isfinite(value) ? value : NAN;
    }
  }
  return y;
}

// Equally spaced points of a curve.
struct Stretch {
  std::vector<double> X, Y;

  double Difference(std::size_t k) const { return std::abs(Y[k - 1] - 2 * Y[k] + Y[k + 1]); }
  // The middle of the three points with the largest second difference.
  std::size_t Roughest() const {
    std::size_t k = 1;
    for (std::size_t i = 2; i + 1 < Y.size(); ++i)
      if (Difference(i) > Difference(k)) k = i;
    return k;
  }
  std::optional<double> WithoutValue() const {
    const auto at = std::ranges::find_if(Y, [](double y) { return std::isnan(y); });
    return at == Y.end() ? std::nullopt : std::optional(X[static_cast<std::size_t>(at - Y.begin())]);
  }
};

// The break in a gap, of which `stretch` has some points and both ends.
std::optional<ModelBreak> BreakIn(Stretch stretch, ModelClass& model, double range, bool jumpsCount, SolveForm& form) {
  const double before = stretch.X.front(), after = stretch.X.back();
  if (const auto at = stretch.WithoutValue()) return ModelBreak{BreakKind::NoValue, *at, before, after};
  std::size_t k = stretch.Roughest();
  const double first = stretch.Difference(k);
  double last = first;
  if (!(first > kVisible * range)) return std::nullopt;
  for (int halving = 0; halving < kHalvings; ++halving) {
    const double left = stretch.X[k - 1], mid = stretch.X[k], right = stretch.X[k + 1];
    const double quarter = left + (mid - left) / 2, third = mid + (right - mid) / 2;
    // Next to each other there is no room for points between, nor would their differences mean anything.
    const double least = 64 * std::numeric_limits<double>::epsilon() * std::max(std::abs(left), std::abs(right));
    if (!(quarter - left > least)) break;
    const std::vector<double> values = ValuesOf(model, {quarter, third}, form);
    stretch = {{left, quarter, mid, third, right},
               {stretch.Y[k - 1], values[0], stretch.Y[k], values[1], stretch.Y[k + 1]}};
    if (form.Aborted) return std::nullopt;
    if (const auto at = stretch.WithoutValue()) return ModelBreak{BreakKind::NoValue, *at, before, after};
    k = stretch.Roughest();
    const double difference = stretch.Difference(k);
    if (difference < kSmooth * last) return std::nullopt;
    last = difference;
  }
  if (last < 0.5 * first || last < kCounts * range) return std::nullopt;
  const bool jumps = last < 2 * first && std::abs(stretch.Y[k + 1] - stretch.Y[k - 1]) > 0.5 * last;
  if (jumps && !jumpsCount) return std::nullopt;
  return ModelBreak{jumps ? BreakKind::Jump : BreakKind::Pole, stretch.X[k], before, after};
}

}  // namespace

std::vector<ModelBreak> FindBreaks(ModelClass& model, const SolveData& data, SolveForm& form) {
  std::vector<ModelBreak> breaks;
  if (data.X.size() != 1 || data.N() < 2) return breaks;
  std::vector<double> x = data.X[0];
  std::ranges::sort(x);
  x.erase(std::unique(x.begin(), x.end()), x.end());
  if (x.size() < 2) return breaks;
  const std::size_t gaps = x.size() - 1;
  const std::size_t between = std::clamp(kMostValues / gaps, std::size_t{1}, kMostBetween);
  std::vector<double> points;
  points.reserve(gaps * (between + 1) + 1);
  for (std::size_t gap = 0; gap < gaps; ++gap)
    for (std::size_t i = 0; i <= between; ++i)
      points.push_back(x[gap] + (x[gap + 1] - x[gap]) * static_cast<double>(i) / static_cast<double>(between + 1));
  points.push_back(x.back());
  const std::vector<double> values = ValuesOf(model, points, form);
  const auto [least, most] = std::ranges::minmax_element(data.Y);
  const double range = *most > *least ? *most - *least : std::abs(*most);
  const bool jumpsCount = !JumpsOnPurpose(model.Compiled());
  for (std::size_t gap = 0; gap < gaps && !form.Aborted; ++gap) {
    const auto from = static_cast<std::ptrdiff_t>(gap * (between + 1)),
               to = from + static_cast<std::ptrdiff_t>(between) + 2;
    Stretch stretch{{points.begin() + from, points.begin() + to}, {values.begin() + from, values.begin() + to}};
    if (const auto found = BreakIn(std::move(stretch), model, range, jumpsCount, form)) breaks.push_back(*found);
  }
  if (form.Aborted) breaks.clear();
  return breaks;
}

}  // namespace quorvex
