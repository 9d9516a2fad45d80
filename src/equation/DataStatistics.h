#pragma once

#include <vector>

namespace quorvex {

// What the input data say about one independent variable.
struct VariableStatistics {
  double InputXMin = 0, InputXMax = 0;
  double XMean = 0, XStd = 0;       // mean and sample standard deviation
  double XAtYMin = 0, XAtYMax = 0;  // X at the smallest and at the largest Y
  double YAtXMin = 0, YAtXMax = 0;  // Y at the smallest and at the largest X
};

// The statistics of the input that a model's words such as "xmean" stand for, and that plots take their range from.
struct DataStatistics {
  std::vector<VariableStatistics> X = std::vector<VariableStatistics>(1);  // one per independent variable
  double InputYMin = 0, InputYMax = 0;
  double YMean = 0, YStd = 0;
};

}  // namespace quorvex
