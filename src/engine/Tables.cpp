// What a solved model hands out: the table of its curve, residuals and roots.

#include <algorithm>
#include <array>
#include <cmath>

#include "core/Limits.h"
#include "core/NumericFault.h"
#include "engine/BlockTeam.h"
#include "engine/FindRoots.h"
#include "engine/ModelClass.h"
#include "functions/InverseNormalDistribution.h"

namespace quorvex {
namespace {

// Every combination of the points of several variables, a column per variable; the first variable runs slowest.
std::vector<std::vector<double>> Mesh(const std::vector<std::vector<double>>& points) {
  std::size_t count = 1;
  for (const std::vector<double>& own : points) count *= own.size();
  std::vector<std::vector<double>> columns;
  std::size_t period = count;  // nodes between two repeats of the variable's first point
  for (const std::vector<double>& own : points) {
    const std::size_t step = period / own.size();
    std::vector<double>& column = columns.emplace_back(count);
    for (std::size_t i = 0; i < count; ++i) column[i] = own[i % period / step];
    period = step;
  }
  return columns;
}

}  // namespace

void ModelClass::CopyInputDataFrom(std::shared_ptr<const InputPoints> source) {
  Input = std::move(source);
  ClearTable();
  Fitted_.clear();
}

void ModelClass::ClearTable() {
  XTable_.clear();
  YTable_.clear();
  ZIsNegative = false;
}

bool ModelClass::ValuesOf(const std::vector<std::vector<double>>& X, std::size_t first, std::size_t n, double* y) {
  if (EvaluateBlock(X, first, n, y)) return true;
  // Room for every variable that a model's text may name, be it beyond those of the data.
  std::array<double, kMostIndependentVariables> x{};
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t v = 0; v < X.size(); ++v) x[v] = X[v][first + i];
    if (!Evaluate(std::span(x).first(X.size()), y[i])) return false;
  }
  return true;
}

std::optional<std::vector<double>> ModelClass::ValuesAt(const std::vector<std::vector<double>>& X) {
  SolveForm unattended;
  return ValuesAt(X, unattended, 1);
}

std::optional<std::vector<double>> ModelClass::ValuesAt(const std::vector<std::vector<double>>& X, SolveForm& form,
                                                        int threads) {
  std::vector<double> values(X.empty() ? 0 : X[0].size());
  BlockTeam team(*this, values.size(), threads);
  const auto goOn = [&form] {
    form.Pulse();
    return !form.Aborted;
  };
  // Each value has a place of its own already.
  const auto compute = [&](std::size_t member, std::size_t block, std::size_t) {
    const std::size_t first = block * kBlock;
    return team.Model(member).ValuesOf(X, first, std::min(kBlock, values.size() - first), &values[first]);
  };
  const std::size_t taken = team.Run(team.Slots(1), goOn, compute, [](std::size_t, std::size_t) { return true; });
  if (taken * kBlock < values.size()) return std::nullopt;
  return values;
}

bool ModelClass::GenerateTable(const std::vector<TableRange>& ranges, bool Extrapolate) {
  ClearTable();
  const bool atInput = ranges.size() == 1 && ranges[0].NumPoints == kInputPoints;
  std::vector<std::vector<double>> mesh;  // none for the input points, which are read where they are
  if (!atInput) {
    try {
      std::vector<std::vector<double>> points;
      for (std::size_t v = 0; v < ranges.size(); ++v) {
        const VariableStatistics& input = Statistics.X[v];
        points.push_back(ranges[v].NumPoints == kInputPoints
                             ? InputMeshPoints(Input->X[v])
                             : TablePoints(ranges[v], input.InputXMin, input.InputXMax, Extrapolate));
      }
      mesh = Mesh(points);
    } catch (const NumericFault&) {
      return false;
    }
  }
  std::optional<std::vector<double>> values = ValuesAt(atInput ? Input->X : mesh);
  if (!values) return false;
  XTable_ = std::move(mesh);
  YTable_ = std::move(*values);
  ZIsNegative = std::any_of(YTable_.begin(), YTable_.end(), [](double y) { return y <= 0; });
  return true;
}

bool ModelClass::GenerateErrorTable() {
  std::optional<std::vector<double>> values = ValuesAt(Input->X);
  Fitted_ = values ? std::move(*values) : std::vector<double>();
  return values.has_value();
}

SeriesTable ModelClass::CopyDataTo(int variable) const {
  if (YTable_.empty()) return {};
  return {XTable_.empty() ? Input->X[Index(variable)] : XTable_[Index(variable)], YTable_};
}

std::optional<std::vector<double>> ModelClass::GenerateResiduals(const SolveData& data) {
  SolveForm unattended;
  return GenerateResiduals(data, unattended, 1);
}

std::optional<std::vector<double>> ModelClass::GenerateResiduals(const SolveData& data, SolveForm& form, int threads) {
  std::optional<std::vector<double>> residuals = ValuesAt(data.X, form, threads);
  if (residuals)
    for (std::size_t i = 0; i < data.N(); ++i) (*residuals)[i] = data.Y[i] - (*residuals)[i];
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
