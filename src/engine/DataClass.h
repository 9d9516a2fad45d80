#pragma once

#include <span>
#include <string>
#include <vector>

#include "engine/SeriesTable.h"

namespace quorvex {

// A raw series of data as a plot shows it and the data calculator computes with it: points with one X or several, and
// perhaps the ends of their error bars.
class DataClass {
 public:
  std::string id, Description;
  bool ErrorInfo = false;  // the error bars below are there
  double InputYMin = 0, InputYMax = 0;

  // Takes the points, a column per independent variable, all of them as long as Y, and finds their limits. Error bars
  // of an earlier table go.
  void GenerateTable(std::vector<std::vector<double>> X, std::vector<double> Y);

  // Error bars of one standard deviation of the point, in the unit of Y, up and down. False, and none, where the
  // deviations are not one for each point or an end has no value.
  bool GenerateErrorTable(std::vector<double> SD);

  std::size_t NumTablePoints() const { return Y_.size(); }
  std::size_t NumInputX() const { return Y_.size(); }
  int NumIV() const { return static_cast<int>(X_.size()); }
  double InputXMin(int variable = 1) const { return limits_[Index(variable)].Min; }
  double InputXMax(int variable = 1) const { return limits_[Index(variable)].Max; }
  double XTableData(std::size_t i, int variable = 1) const { return X_[Index(variable)][i - 1]; }  // from 1
  double YTableData(std::size_t i) const { return Y_[i - 1]; }
  double YMinError(std::size_t i) const { return YMinError_[i - 1]; }
  double YMaxError(std::size_t i) const { return YMaxError_[i - 1]; }

  // The points, with the X of one variable.
  SeriesTable CopyDataTo(int variable = 1) const { return {X_[Index(variable)], Y_}; }

  // The ends of the error bars, to a file and from it.
  ErrorTable CopyMaXMinErrorDataTo() const { return {YMaxError_, YMinError_}; }
  void CopyMaxMinErrorDataFrom(std::vector<double> max, std::vector<double> min);

 private:
  struct Limits {
    double Min = 0, Max = 0;
  };
  static std::size_t Index(int variable) { return static_cast<std::size_t>(variable - 1); }

  std::vector<std::vector<double>> X_ = std::vector<std::vector<double>>(1);
  std::vector<double> Y_;
  std::vector<Limits> limits_ = std::vector<Limits>(1);  // one per independent variable
  std::vector<double> YMinError_, YMaxError_;
};

}  // namespace quorvex
