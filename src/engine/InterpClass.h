#pragma once

#include <string>
#include <utility>
#include <vector>

#include "core/SolveData.h"
#include "engine/SeriesTable.h"
#include "engine/TableRange.h"

namespace quorvex {

// The kinds of interpolation, by the numbers that files store.
enum InterpolationKind : int { kCubicSpline = 0, kPolynomial = 1, kRationalFunction = 2 };

// The three arrays of an interpolation, of equal length.
struct InterpolationTable {
  std::vector<double> X;   // ascending, no two equal
  std::vector<double> Y;   // the mean where the data have several
  std::vector<double> Y2;  // second derivatives of the spline at X; 0 for other kinds

  bool operator==(const InterpolationTable&) const = default;
};

// A curve exactly through a single series of points, as an alternative to a model. It has no coefficients and no
// statistics, and it does not extrapolate.
//
// Cubic spline: natural, from three points on. Polynomial: the one of least degree through all points, by Neville's
// scheme. Rational function: the diagonal one, by the scheme of Stoer & Bulirsch (Introduction to Numerical Analysis,
// 2.2). The latter two take 2 to 10 points.
class InterpClass {
 public:
  // An interpolation of that kind, with its names.
  explicit InterpClass(int kind = kCubicSpline);

  std::string id;           // its short name
  std::string Description;  // its name in full
  int SolveType;            // one of InterpolationKind
  bool Solve = false;       // selected for the next solve
  bool Solved = false;      // the last Fit succeeded
  bool ErrorInfo = false;
  std::string LegendText;      // of the curve in plots, and whether these show its error bars: read from project files
  bool ShowErrorBars = false;  // and written to them
  double InputXMin = 0, InputXMax = 0, InputYMin = 0, InputYMax = 0;

  // Takes the points, which are sorted by X; neighbours with equal X become one with the mean of their Y. True when the
  // curve stands; `LogString` grows by an account, and says why not.
  bool Fit(const SolveData& data, std::string& LogString);

  // The fewest and the most points of different X that an interpolation of this kind takes.
  std::pair<std::size_t, std::size_t> PointsTaken() const;

  // The value at X. False, with a text in `ErrString`, outside the input range and where there is none.
  bool Evaluate(double X, double& Y) const;
  bool Evaluate(double X, double& Y, std::string& ErrString) const;

  // Where the curve takes the value Y between XMin and XMax; see FindRoots.
  std::vector<double> GetRoots(double XMin, double XMax, double Y, int Intervals = 200) const;

  // The table of the curve; points without a value are left out. False, and an empty table, for a range of one point or
  // none.
  bool GenerateTable(const TableRange& range, bool Extrapolate = false);
  std::size_t NumTablePoints() const { return YTable_.size(); }
  double XTableData(std::size_t i) const { return XTable_[i - 1]; }  // from 1
  double YTableData(std::size_t i) const { return YTable_[i - 1]; }
  // The table as a series of a plot.
  SeriesTable CopyDataTo() const { return {XTable_, YTable_}; }

  // The input points, number i from 1.
  std::size_t NumInputX() const { return input_.X.size(); }
  double InputX(std::size_t i) const { return input_.X[i - 1]; }
  double InputY(std::size_t i) const { return input_.Y[i - 1]; }
  double InputY2(std::size_t i) const { return input_.Y2[i - 1]; }
  const InterpolationTable& CopyInterpolationTableTo() const { return input_; }
  void CopyInterpolationTableFrom(InterpolationTable source) { input_ = std::move(source); }

  void Datachange() { Solved = false; }

 private:
  bool WithinInput(double X) const { return X >= InputXMin && X <= InputXMax; }
  bool MergeInput(const SolveData& data);
  void ComputeSpline();
  double SplineAt(double X) const;
  double PolynomialAt(double X) const;
  double RationalAt(double X) const;

  InterpolationTable input_;
  std::vector<double> XTable_, YTable_;
};

}  // namespace quorvex
