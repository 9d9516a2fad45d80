// What a solved model hands out: the table of its curve, residuals and roots.

#include <algorithm>
#include <array>
#include <cmath>

#include "core/NumericFault.h"
#include "engine/FindRoots.h"
#include "engine/ModelClass.h"
#include "functions/InverseNormalDistribution.h"

namespace quorvex {

void ModelClass::CopyInputDataFrom(std::shared_ptr<const InputPoints> source) {
  Input = std::move(source);
  XTable_.clear();
  YTable_.clear();
}

bool ModelClass::GenerateTable(const std::vector<TableRange>& ranges, bool Extrapolate) {
  XTable_.clear();
  YTable_.clear();
  std::size_t count = NumInputX();
  if (ranges[0].NumPoints != kInputPoints) {
    count = 1;
    try {
      for (std::size_t v = 0; v < ranges.size(); ++v) {
        const VariableStatistics& input = Statistics.X[v];
        XTable_.push_back(TablePoints(ranges[v], input.InputXMin, input.InputXMax, Extrapolate));
        count *= XTable_.back().size();
      }
    } catch (const NumericFault&) {
      XTable_.clear();
      return false;
    }
    // The first variable runs slowest.
    std::size_t period = count;  // points between two repeats of the variable's first
    for (std::vector<double>& column : XTable_) {
      const std::vector<double> points = std::move(column);
      const std::size_t step = period / points.size();
      column.resize(count);
      for (std::size_t i = 0; i < count; ++i) column[i] = points[i % period / step];
      period = step;
    }
  }

  // XTable_ stays empty for the input's own points, which are read where they are instead of copied.
  const std::vector<std::vector<double>>& columns = XTable_.empty() ? Input->X : XTable_;
  // Room for every variable that a model's text may name, be it beyond those of the data.
  std::array<double, kMostIndependentVariables> x{};
  std::vector<double> values;
  values.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t v = 0; v < columns.size(); ++v) x[v] = columns[v][i];
    double y = 0;
    if (!Evaluate(std::span(x).first(columns.size()), y)) {
      XTable_.clear();
      return false;
    }
    values.push_back(y);
  }
  YTable_ = std::move(values);
  return true;
}

SeriesTable ModelClass::CopyDataTo(int variable) const {
  if (YTable_.empty()) return {};
  return {XTable_.empty() ? Input->X[Index(variable)] : XTable_[Index(variable)], YTable_};
}

std::optional<std::vector<double>> ModelClass::GenerateResiduals(const SolveData& data) {
  std::vector<double> residuals(data.N());
  std::array<double, kMostIndependentVariables> x{};
  for (std::size_t i = 0; i < data.N(); ++i) {
    double y = 0;
    if (!Evaluate(data.Point(i, x), y)) return std::nullopt;
    residuals[i] = data.Y[i] - y;
  }
  return residuals;
}

std::optional<NormalTable> ModelClass::GenerateQQTable(const SolveData& data) {
  std::optional<std::vector<double>> residuals = GenerateResiduals(data);
  if (!residuals) return std::nullopt;
  NormalTable table{{}, std::move(*residuals)};
  for (double& e : table.Sorted) {
    // A perfect fit has nothing but residuals of 0, which need no scale.
    if (StdErr != 0) e /= StdErr;
    if (!std::isfinite(e)) return std::nullopt;
  }
  std::sort(table.Sorted.begin(), table.Sorted.end());
  const double N = static_cast<double>(data.N());
  // The middles of N equal parts of probability: the quantiles of 0 and 1 are infinite.
  for (std::size_t i = 0; i < data.N(); ++i)
    table.Quantiles.push_back(InverseNormalDistribution((static_cast<double>(i) + 0.5) / N));
  return table;
}

std::vector<double> ModelClass::GetRoots(double XMin, double XMax, double Y, int Intervals, std::vector<double> at,
                                         int variable) {
  const auto distance = [&](double x) -> std::optional<double> {
    at[Index(variable)] = x;
    double y = 0;
    if (!Evaluate(at, y)) return std::nullopt;
    return y - Y;
  };
  return FindRoots(distance, XMin, XMax, Intervals);
}

}  // namespace quorvex
