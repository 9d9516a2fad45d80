// Where a nonlinear search starts: linearisation of a built-in model, the rules of the coefficients, ranges.

#include <algorithm>
#include <cmath>
#include <cstring>

#include "core/Limits.h"
#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "core/VectorRegister.h"
#include "core/VectorWidth.h"
#include "engine/DesignSolve.h"
#include "engine/ModelClass.h"
#include "equation/Linearization.h"

namespace quorvex {
namespace {

struct Moments {
  double mean, std;
};

// Mean and sample standard deviation of a column, in two passes about the mean; the second sum takes off what rounding
// left in it. The values are brought near 1 by a power of two: that changes no digit, and keeps sums and squares of
// very large and very small ones within range.
class MomentSums {
 public:
  MomentSums(const std::vector<double>& values, double least, double greatest) : values_(values.data()) {
    int exponent = 0;
    std::frexp(std::max(std::abs(least), std::abs(greatest)), &exponent);
    // Within these bounds the unit and its inverse are both normal numbers.
    exponent = std::clamp(exponent, -1000, 1000);
    unit_ = std::ldexp(1.0, exponent);
    inverse_ = std::ldexp(1.0, -exponent);
  }

  void AddValue(std::size_t i) { sum_ += values_[i] * inverse_; }
  void TakeMean(double n) { mean_ = sum_ / n; }
  void AddSquare(std::size_t i) {
    const double d = values_[i] * inverse_ - mean_;
    squares_ += d * d;
    rest_ += d;
  }
  Moments Result(double n) const {
    const double mean = mean_ * unit_, std = std::sqrt((squares_ - rest_ * rest_ / n) / (n - 1)) * unit_;
    if (!std::isfinite(mean) || !std::isfinite(std)) throw NumericFault();
    return {mean, std};
  }

 private:
  const double* values_;
  double unit_ = 1, inverse_ = 1, sum_ = 0, mean_ = 0, squares_ = 0, rest_ = 0;
};

// Of two columns of n values in the same passes, since each sum alone waits for its own additions.
void TakeSums(MomentSums& first, MomentSums& second, std::size_t n) {
  MomentSums a = first, b = second;
  for (std::size_t i = 0; i < n; ++i) {
    a.AddValue(i);
    b.AddValue(i);
  }
  a.TakeMean(static_cast<double>(n));
  b.TakeMean(static_cast<double>(n));
  for (std::size_t i = 0; i < n; ++i) {
    a.AddSquare(i);
    b.AddSquare(i);
  }
  first = a;
  second = b;
}

// Where the least and the greatest value stand, the first of equal ones.
struct Extremes {
  std::size_t Least = 0, Greatest = 0;
};

// Widens the limits to those of the values.
template <std::size_t lanes>
[[gnu::always_inline]] inline void LimitsOf(const double* v, std::size_t n, double& low, double& high) {
  using Register = typename VectorRegister<lanes>::Type;
  Register value, lower = low - Register{}, upper = high - Register{};
  std::size_t i = 0;
  for (; i + lanes <= n; i += lanes) {
    std::memcpy(&value, v + i, sizeof(value));
    lower = value < lower ? value : lower;
    upper = value > upper ? value : upper;
  }
  for (std::size_t k = 0; k < lanes; ++k) {
    low = std::min(low, lower[k]);
    high = std::max(high, upper[k]);
  }
  for (; i < n; ++i) {
    low = std::min(low, v[i]);
    high = std::max(high, v[i]);
  }
}

Extremes ExtremesOf(const std::vector<double>& values) {
  Extremes at;
  double least = values[0], greatest = least;
  // In which block they stand, and where in that is looked for in the end.
  const auto ofBlock =
      [](auto lanes, const double* v, std::size_t n, double* low, double* high) __attribute__((always_inline)) {
    LimitsOf<lanes()>(v, n, *low, *high);
  };
  for (std::size_t first = 0; first < values.size(); first += kBlock) {
    double low = least, high = greatest;
    AtFullWidth(ofBlock, &values[first], std::min(kBlock, values.size() - first), &low, &high);
    if (low < least) at.Least = first;
    if (high > greatest) at.Greatest = first;
    least = low;
    greatest = high;
  }
  while (values[at.Least] > least) ++at.Least;
  while (values[at.Greatest] < greatest) ++at.Greatest;
  return at;
}

// The coefficients by the linear form of a built-in model, solved exactly: the solution itself on the linear road, a
// start on the nonlinear one. `variances` become those of the linear form. A singular value that is exactly 0 raises a
// fault.
std::vector<double> Linearize(const CatalogueModel& builtIn, const SolveData& data, std::vector<double>& variances,
                              const Box* inside = nullptr) {
  const std::vector<double> yT = LinearizeData(builtIn, data.X, data.Y);
  LinearSolution solution =
      inside ? DesignSolveInside(builtIn, data.X, yT, data.sig, *inside) : DesignSolve(builtIn, data.X, yT, data.sig);
  const std::size_t n = solution.w.size();
  // The diagonal of V diag(1/w^2) V^T, in units of the residuals' variance.
  for (std::size_t i = 0; i < variances.size(); ++i) {
    double sum = 0;
    for (std::size_t j = 0; j < n; ++j) {
      const double quotient = solution.v(i, j) / solution.w[j];
      sum += quotient * quotient;
    }
    if (!std::isfinite(sum)) throw NumericFault();
    variances[i] = sum;
  }
  RestoreParameters(builtIn, solution.a);
  return std::move(solution.a);
}

// The extremes are the first of equal ones. What has no value is 0. Throws NumericFault where that is so.
void TakeStatistics(const SolveData& data, DataStatistics& statistics) {
  const std::vector<double>& y = data.Y;
  if (y.empty()) throw NumericFault();
  const auto [yMin, yMax] = ExtremesOf(y);
  statistics.InputYMin = y[yMin];
  statistics.InputYMax = y[yMax];
  statistics.X.assign(data.X.size(), {});
  for (std::size_t v = 0; v < data.X.size(); ++v) {
    const std::vector<double>& column = data.X[v];
    VariableStatistics& x = statistics.X[v];
    const auto [xMin, xMax] = ExtremesOf(column);
    x.InputXMin = column[xMin];
    x.InputXMax = column[xMax];
    x.XAtYMin = column[yMin];
    x.XAtYMax = column[yMax];
    x.YAtXMin = y[xMin];
    x.YAtXMax = y[xMax];
  }
  // After all extremes: where a moment overflows, these are in place already.
  std::vector<MomentSums> sums;
  for (std::size_t v = 0; v < data.X.size(); ++v)
    sums.emplace_back(data.X[v], statistics.X[v].InputXMin, statistics.X[v].InputXMax);
  sums.emplace_back(y, statistics.InputYMin, statistics.InputYMax);
  for (std::size_t c = 0; c < sums.size(); c += 2) {
    MomentSums unused = sums[c];
    TakeSums(sums[c], c + 1 < sums.size() ? sums[c + 1] : unused, y.size());
  }
  const double n = static_cast<double>(y.size());
  for (std::size_t v = 0; v < data.X.size(); ++v) {
    const Moments moments = sums[v].Result(n);
    statistics.X[v].XMean = moments.mean;
    statistics.X[v].XStd = moments.std;
  }
  const Moments moments = sums.back().Result(n);
  statistics.YMean = moments.mean;
  statistics.YStd = moments.std;
}

void TakeEstimates(const std::vector<double>& a, ModelClass& model) {
  for (std::size_t i = 0; i < model.CoefficientValues.size(); ++i) {
    model.CoefficientValues[i] = a[i];
    model.ICRanges[i] = {a[i], a[i], 1};
  }
}

void TakeDefaults(ModelClass& model) {
  model.SpecifyICComplete = false;
  model.CoefficientValues.assign(model.CoefficientValues.size(), 1.0);
  model.ICRanges.assign(model.ICRanges.size(), {});
}

}  // namespace

std::shared_ptr<const FitInput> ModelClass::InputOf(const SolveData& data) const {
  const auto input = std::make_shared<FitInput>();
  input->Points = std::make_shared<const InputPoints>(InputTable(data));
  try {
    TakeStatistics(data, input->Statistics);
    input->IsWhole = true;
  } catch (const NumericFault&) {
  }
  return input;
}

// The input that tables, plots and the words of a model go by. It belongs to every fit, whoever gave its start, and
// nothing of earlier data is left.
void ModelClass::TakeInput(const SolveData& data) {
  const std::shared_ptr<const FitInput> input = shared_ ? shared_ : InputOf(data);
  CopyInputDataFrom(input->Points);
  Statistics = input->Statistics;
  if (!input->IsWhole) throw NumericFault();
}

bool ModelClass::SetIC(const SolveData& data) {
  SpecifyICComplete = true;
  try {
    TakeInput(data);
    std::vector<double> a;
    if (!UserType && !ForceRuleEstimate) {
      if (builtIn_ != nullptr) {
        TakeEstimates(Linearize(*builtIn_, data, Variances), *this);
        return true;
      }
    } else if (RuleEstimate(data, a)) {
      if (!UserType) SpecifyICComplete = false;
      TakeEstimates(a, *this);
      return true;
    }
  } catch (const NumericFault&) {
  }
  // The caller knows what a failed estimate means: a linear fit has failed, a nonlinear one starts from the defaults.
  TakeDefaults(*this);
  return false;
}

std::string ModelClass::SolveLinearFormInside(const SolveData& data) {
  const Box box = Bounds();
  const std::optional<Box> linear = LinearFormBox(*builtIn_, box);
  if (!linear) return "The linear solver cannot keep the bounds of this model; the nonlinear solver can.";
  for (std::size_t i = 0; i < CoefficientValues.size(); ++i)
    if (linear->Lower[i] > linear->Upper[i])
      return "Coefficient " + Coefficients[i].Name + " is positive in the linear solver, and its maximum of " +
             GeneralNumber(box.Upper[i]) + " is not.";
  try {
    std::vector<double> a = Linearize(*builtIn_, data, Variances, &*linear);
    // What lies on a bound of the linear form lies on the model's own, which the way back may miss by a rounding.
    for (std::size_t i = 0; i < CoefficientValues.size(); ++i)
      if (Variances[i] == 0)
        a[i] = std::abs(a[i] - box.Lower[i]) <= std::abs(a[i] - box.Upper[i]) ? box.Lower[i] : box.Upper[i];
    box.BringInside(std::span(a).first(CoefficientValues.size()));
    TakeEstimates(a, *this);
  } catch (const NumericFault&) {
    return "The linear problem within the bounds has no solution.";
  }
  return {};
}

bool ModelClass::RuleEstimate(const SolveData& data, std::vector<double>& a) const {
  a.assign(CoefficientValues.size(), 0.0);
  for (std::size_t i = 0; i < CoefficientValues.size(); ++i) {
    const Coefficient& coefficient = Coefficients[i];
    std::string rule = ToLower(coefficient.Rule);
    std::erase(rule, ' ');
    const std::optional<double> constant = NumericText(coefficient.RuleConstant, locale_.DecimalSeparator);
    if (rule.empty() || !constant) return false;
    if (rule == "value") {
      a[i] = *constant;
      continue;
    }
    const bool divides = rule[0] == '/';
    if (!divides && rule[0] != '*') return false;
    const std::optional<double> quantity = RuleQuantity(rule, data);
    if (!quantity) return false;
    // A quantity of 0 cannot divide; 1 is the start of a coefficient of which nothing is known.
    if (!divides)
      a[i] = *constant * *quantity;
    else
      a[i] = *quantity == 0 ? 1.0 : *constant / *quantity;
    if (!std::isfinite(a[i])) throw NumericFault();
  }
  return true;
}

std::vector<std::vector<double>> BuildICSets(const std::vector<ICRange>& ranges) {
  std::size_t count = 1;
  for (const ICRange& range : ranges) count *= static_cast<std::size_t>(std::max(range.Steps, 1));
  std::vector<std::vector<double>> sets(count, std::vector<double>(ranges.size()));
  // The first coefficient runs fastest.
  std::size_t period = 1;  // rows between two steps of the coefficient
  for (std::size_t i = 0; i < ranges.size(); ++i) {
    const auto steps = static_cast<std::size_t>(std::max(ranges[i].Steps, 1));
    const double increment = steps < 2 ? 0.0 : (ranges[i].Max - ranges[i].Min) / static_cast<double>(steps - 1);
    for (std::size_t row = 0; row < count; ++row)
      sets[row][i] = ranges[i].Min + static_cast<double>(row / period % steps) * increment;
    period *= steps;
  }
  return sets;
}

}  // namespace quorvex
