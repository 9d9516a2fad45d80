#include "engine/InterpClass.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/Files.h"
#include "core/NumericFault.h"
#include "engine/FindRoots.h"

namespace quorvex {
namespace {

// The polynomial and the rational function swing wildly through more points than these.
constexpr std::size_t kMostPoints = 10;

// What a kind is called, here and in the log, and how many points it takes.
struct KindWords {
  const char* ShortName;
  const char* Description;
  const char* LogName;      // in the lines of an attempt
  const char* Requirement;  // what too few points are told
  const char* Fault;
  std::size_t FewestPoints, MostPoints;
};
constexpr std::array<KindWords, 3> kKinds = {{
    {"Cubic Spline", "Cubic Spline Interpolation", "Cubic Splines Interpolation",
     "Need at least 3 points for Cubic Splines.", "Solution for Cubic Spline Interpolation failed: Numberical Error", 3,
     static_cast<std::size_t>(-1)},
    {"Polynomial", "Polynomial Interpolation", "Polynomial Interpolation",
     "Need at least 2 points for Polynomial Interpolation.",
     "Solution for Polynomial Interpolation failed: Numerical Error", 2, kMostPoints},
    {"Rational Function", "Rational Function Interpolation", "Rational Function Interpolation",
     "Need at least 2 points for Rational Function Interpolation.",
     "Solution for Rational Function Interpolation failed: Numerical Error", 2, kMostPoints},
}};

const KindWords* WordsOf(int kind) {
  return kind >= 0 && static_cast<std::size_t>(kind) < kKinds.size() ? &kKinds[static_cast<std::size_t>(kind)]
                                                                     : nullptr;
}

bool AllFinite(const std::vector<double>& values) {
  return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
}

// Sums differences that climb a triangular scheme from single points to all of them. `step` turns the neighbours c and
// d of an entry into its own: what it adds when the entry is reached from the left, and from the right. The sum starts
// at point `nearest` and keeps to the middle.
template <typename Step>
double ClimbScheme(const std::vector<double>& y, double offset, std::size_t nearest, Step step) {
  const std::size_t n = y.size();
  if (n > kMostPoints) throw NumericFault();
  std::array<double, kMostPoints> c{}, d{};
  for (std::size_t i = 0; i < n; ++i) {
    c[i] = y[i];
    d[i] = y[i] + offset;
  }
  double sum = y[nearest];
  std::size_t at = nearest;  // entries of the column to the left of the path
  for (std::size_t m = 1; m < n; ++m) {
    for (std::size_t i = 0; i + m < n; ++i) step(i, i + m, c[i + 1], c[i], d[i]);
    if (2 * at < n - m)
      sum += c[at];
    else
      sum += d[--at];
  }
  return sum;
}

}  // namespace

InterpClass::InterpClass(int kind) : SolveType(kind) {
  if (const KindWords* words = WordsOf(kind)) {
    id = words->ShortName;
    Description = words->Description;
  }
}

std::pair<std::size_t, std::size_t> InterpClass::PointsTaken() const {
  const KindWords* words = WordsOf(SolveType);
  return words != nullptr ? std::pair(words->FewestPoints, words->MostPoints) : std::pair(std::size_t{0}, NumInputX());
}

bool InterpClass::Fit(const SolveData& data, std::string& LogString) {
  const auto line = [&](const std::string& text) { LogString.append(text).append(NL); };
  const KindWords* words = WordsOf(SolveType);
  Solved = false;
  try {
    const bool merged = MergeInput(data);
    if (words == nullptr) return Solved = true;
    line(std::string("Beginning ") + words->LogName + " ");
    if (merged) line("Duplicate points detected, points averaged. ");
    const bool tooFew = NumInputX() < words->FewestPoints;
    if (tooFew || NumInputX() > words->MostPoints) {
      line(tooFew ? words->Requirement : "Number of points exceeds maximum of 10.");
      line(std::string("Solution for ") + words->LogName + " Failed.");
    } else {
      if (SolveType == kCubicSpline) ComputeSpline();
      line(std::string(words->LogName) + " Successful");
      Solved = true;
    }
    LogString += NL;
  } catch (const NumericFault&) {
    if (words != nullptr) line(words->Fault);
  }
  return Solved;
}

// True where there were points to merge.
bool InterpClass::MergeInput(const SolveData& data) {
  XTable_.clear();
  YTable_.clear();
  input_ = {};
  const std::vector<double>& x = data.X[0];
  for (std::size_t i = 0; i < x.size();) {
    std::size_t end = i;
    double sum = 0;
    // The points are sorted, so that equal X are neighbours.
    for (; end < x.size() && x[end] == x[i]; ++end) sum += data.Y[end];
    input_.X.push_back(x[i]);
    input_.Y.push_back(sum / static_cast<double>(end - i));
    i = end;
  }
  input_.Y2.assign(input_.X.size(), 0.0);
  if (!AllFinite(input_.Y)) throw NumericFault();
  if (!input_.X.empty()) {
    const auto [xMin, xMax] = std::minmax_element(input_.X.begin(), input_.X.end());
    const auto [yMin, yMax] = std::minmax_element(input_.Y.begin(), input_.Y.end());
    InputXMin = *xMin;
    InputXMax = *xMax;
    InputYMin = *yMin;
    InputYMax = *yMax;
  }
  return input_.X.size() < x.size();
}

// Continuity of the first derivative at the inner points gives a tridiagonal system for the second derivatives, which
// are 0 at both ends: one sweep down, one back.
void InterpClass::ComputeSpline() {
  const std::vector<double>&x = input_.X, &y = input_.Y;
  std::vector<double>& y2 = input_.Y2;
  const std::size_t n = x.size();
  std::vector<double> u(n, 0.0);
  for (std::size_t i = 1; i + 1 < n; ++i) {
    const double sig = (x[i] - x[i - 1]) / (x[i + 1] - x[i - 1]);
    const double p = sig * y2[i - 1] + 2;
    const double slopes = (y[i + 1] - y[i]) / (x[i + 1] - x[i]) - (y[i] - y[i - 1]) / (x[i] - x[i - 1]);
    // On the way down y2 holds the multipliers that the way back needs, and u the right-hand side.
    y2[i] = (sig - 1) / p;
    u[i] = (6 * slopes / (x[i + 1] - x[i - 1]) - sig * u[i - 1]) / p;
  }
  for (std::size_t k = n - 1; k-- > 0;) y2[k] = y2[k] * y2[k + 1] + u[k];
  if (!AllFinite(y2)) throw NumericFault();
}

bool InterpClass::Evaluate(double X, double& Y) const {
  if (!WithinInput(X) || input_.X.empty()) return false;
  try {
    const double value = SolveType == kCubicSpline        ? SplineAt(X)
                         : SolveType == kPolynomial       ? PolynomialAt(X)
                         : SolveType == kRationalFunction ? RationalAt(X)
                                                          : throw NumericFault();
    if (!std::isfinite(value)) throw NumericFault();
    Y = value;
    return true;
  } catch (const NumericFault&) {
    return false;
  }
}

bool InterpClass::Evaluate(double X, double& Y, std::string& ErrString) const {
  if (Evaluate(X, Y)) return true;
  ErrString = WithinInput(X) ? "Error evaluating the function" : "Data lies outside of the valid range";
  return false;
}

double InterpClass::SplineAt(double X) const {
  const std::vector<double>&x = input_.X, &y = input_.Y, &y2 = input_.Y2;
  std::size_t klo = 0, khi = x.size() - 1;
  while (khi - klo > 1) {
    const std::size_t middle = (khi + klo) / 2;
    (x[middle] > X ? khi : klo) = middle;
  }
  const double h = x[khi] - x[klo];
  if (h == 0) throw NumericFault();
  const double A = (x[khi] - X) / h, B = (X - x[klo]) / h;
  // The straight line between the two points, and how far the second derivatives at them bend it.
  return A * y[klo] + B * y[khi] + ((A * A * A - A) * y2[klo] + (B * B * B - B) * y2[khi]) * (h * h) / 6;
}

double InterpClass::PolynomialAt(double X) const {
  const std::vector<double>& x = input_.X;
  const auto nearest =
      std::min_element(x.begin(), x.end(), [X](double a, double b) { return std::abs(a - X) < std::abs(b - X); });
  // Each entry is the polynomial through points first to last; `c` and `d` are its differences to those of one less.
  return ClimbScheme(input_.Y, 0, static_cast<std::size_t>(nearest - x.begin()),
                     [&](std::size_t first, std::size_t last, double right, double& c, double& d) {
                       const double fromFirst = x[first] - X, fromLast = x[last] - X;
                       if (fromFirst == fromLast) throw NumericFault();
                       const double w = (right - d) / (fromFirst - fromLast);
                       d = fromLast * w;
                       c = fromFirst * w;
                     });
}

double InterpClass::RationalAt(double X) const {
  const std::vector<double>& x = input_.X;
  std::size_t nearest = 0;
  for (std::size_t i = 0; i < x.size(); ++i) {
    // At a point itself the scheme would divide by 0.
    if (x[i] == X) return input_.Y[i];
    if (std::abs(x[i] - X) < std::abs(x[nearest] - X)) nearest = i;
  }
  constexpr double kTiny = 1e-25;  // keeps 0/0 from occurring where values are 0
  return ClimbScheme(input_.Y, kTiny, nearest,
                     [&](std::size_t first, std::size_t last, double right, double& c, double& d) {
                       const double t = (x[first] - X) * d / (x[last] - X);
                       const double denominator = t - right;
                       if (denominator == 0) throw NumericFault();
                       const double w = (right - d) / denominator;
                       d = right * w;
                       c = t * w;
                     });
}

std::vector<double> InterpClass::GetRoots(double XMin, double XMax, double Y, int Intervals) const {
  const auto distance = [&](double x) -> std::optional<double> {
    double y = 0;
    if (!Evaluate(x, y)) return std::nullopt;
    return y - Y;
  };
  return FindRoots(distance, XMin, XMax, Intervals);
}

bool InterpClass::GenerateTable(const TableRange& range, bool Extrapolate) {
  XTable_.clear();
  YTable_.clear();
  std::vector<double> points;
  try {
    points = range.NumPoints == kInputPoints ? input_.X : TablePoints(range, InputXMin, InputXMax, Extrapolate);
  } catch (const NumericFault&) {
    return false;
  }
  for (const double x : points) {
    double y = 0;
    // Points beyond the input, or at a pole of the rational function, have no value and are left out.
    if (!Evaluate(x, y)) continue;
    XTable_.push_back(x);
    YTable_.push_back(y);
  }
  return true;
}

}  // namespace quorvex
