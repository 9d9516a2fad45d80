#include "plot/RefineCurve.h"

#include <algorithm>
#include <cmath>

namespace quorvex {
namespace {

constexpr int kGenerations = 12;
constexpr std::size_t kMostPoints = 20'000;
constexpr double kWithin[] = {0.414, 0.809};  // of a chord, where it is tried

// A point of the curve and where it is drawn.
struct Spot {
  double X, Y, Across, Down;
};

double Place(const AxisMap& map, double value) {
  return (map.Log ? std::log10(value) : value) * map.Scale + map.Offset;
}

double DistanceFromChord(const Spot& from, const Spot& to, const Spot& point) {
  const double across = to.Across - from.Across, down = to.Down - from.Down, length = std::hypot(across, down);
  const double ownAcross = point.Across - from.Across, ownDown = point.Down - from.Down;
  return length == 0 ? std::hypot(ownAcross, ownDown) : std::abs(across * ownDown - down * ownAcross) / length;
}

class Refiner {
 public:
  Refiner(const CurveValue& value, const PlotPicture& picture, const PlotClass& plot, double tolerance)
      : value_(value),
        mapX_(plot.SwapAxis ? picture.Vertical : picture.Horizontal),
        mapY_(plot.SwapAxis ? picture.Horizontal : picture.Vertical),
        minX_(plot.X.Min),
        maxX_(plot.X.Max),
        minY_(plot.Y.Min),
        maxY_(plot.Y.Max),
        tolerance_(tolerance) {}

  Curve Refine(const SeriesTable& table) {
    for (std::size_t i = 0; i < table.Y.size(); ++i) {
      if (i > 0) Divide(At(table.X[i - 1], table.Y[i - 1]), At(table.X[i], table.Y[i]), 0);
      curve_.X.push_back(table.X[i]);
      curve_.Y.push_back(table.Y[i]);
    }
    return std::move(curve_);
  }

 private:
  Spot At(double x, double y) const { return {x, y, Place(mapX_, x), Place(mapY_, y)}; }

  // Appends the points between two.
  void Divide(const Spot& from, const Spot& to, int generation) {
    if (generation == kGenerations || BesideFrame(from.X, to.X, minX_, maxX_)) return;
    for (const double within : kWithin) {
      if (added_ == kMostPoints) return;
      const double x =
          mapX_.Log ? std::exp(std::lerp(std::log(from.X), std::log(to.X), within)) : std::lerp(from.X, to.X, within);
      double y = 0;
      // Also where there are no numbers in between, or none on a logarithmic axis.
      if (!(x > std::min(from.X, to.X) && x < std::max(from.X, to.X)) || !value_(x, y)) return;
      const Spot between = At(x, y);
      if (BesideFrame(from.Y, to.Y, minY_, maxY_) && BesideFrame(from.Y, y, minY_, maxY_)) continue;
      if (!IsOff(from, to, between)) continue;
      Divide(from, between, generation + 1);
      ++added_;
      curve_.X.push_back(x);
      curve_.Y.push_back(y);
      return Divide(between, to, generation + 1);
    }
  }

  // Beyond the ends of a steep chord the top of a wave may be near to it, and yet be missed.
  bool IsOff(const Spot& from, const Spot& to, const Spot& between) const {
    const auto [low, high] = std::minmax(from.Down, to.Down);
    return DistanceFromChord(from, to, between) > tolerance_ || between.Down < low - tolerance_ ||
           between.Down > high + tolerance_;
  }

  static bool BesideFrame(double a, double b, double min, double max) {
    return std::max(a, b) < min || std::min(a, b) > max;
  }

  const CurveValue& value_;
  const AxisMap &mapX_, &mapY_;
  double minX_, maxX_, minY_, maxY_, tolerance_;
  std::size_t added_ = 0;
  Curve curve_;
};

}  // namespace

Curve RefineCurve(const SeriesTable& table, const CurveValue& value, const PlotPicture& picture, const PlotClass& plot,
                  double tolerance) {
  return Refiner(value, picture, plot, tolerance).Refine(table);
}

}  // namespace quorvex
