#include "engine/TakeFitInput.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <vector>

#include "core/LargePages.h"
#include "core/Limits.h"
#include "core/NumericFault.h"
#include "core/ThreadTeam.h"
#include "core/VectorRegister.h"
#include "core/VectorWidth.h"
#include "engine/SolveForm.h"

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
void TakeSums(MomentSums& first, MomentSums& second, std::size_t n, const LookAround& look) {
  const auto overAll = [&](auto add) {
    InPieces(n, look, [&](std::size_t from, std::size_t end) {
      MomentSums a = first, b = second;  // copies, which stay in registers
      for (std::size_t i = from; i < end; ++i) {
        add(a, i);
        add(b, i);
      }
      first = a;
      second = b;
    });
  };
  overAll([](MomentSums& sums, std::size_t i) { sums.AddValue(i); });
  first.TakeMean(static_cast<double>(n));
  second.TakeMean(static_cast<double>(n));
  overAll([](MomentSums& sums, std::size_t i) { sums.AddSquare(i); });
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

Extremes ExtremesOf(const std::vector<double>& values, const LookAround& look) {
  Extremes at;
  double least = values[0], greatest = least;
  // In which block they stand, and where in that is looked for in the end.
  const auto ofBlock =
      [](auto lanes, const double* v, std::size_t n, double* low, double* high) __attribute__((always_inline)) {
    LimitsOf<lanes()>(v, n, *low, *high);
  };
  InPieces(values.size(), look, [&](std::size_t from, std::size_t end) {
    for (std::size_t first = from; first < end; first += kBlock) {
      double low = least, high = greatest;
      AtFullWidth(ofBlock, &values[first], std::min(kBlock, end - first), &low, &high);
      if (low < least) at.Least = first;
      if (high > greatest) at.Greatest = first;
      least = low;
      greatest = high;
    }
  });
  while (values[at.Least] > least) ++at.Least;
  while (values[at.Greatest] < greatest) ++at.Greatest;
  return at;
}

// The extremes are the first of equal ones. What has no value is 0. Throws NumericFault where that is so.
void TakeStatistics(const SolveData& data, DataStatistics& statistics, const LookAround& look) {
  const std::vector<double>& y = data.Y;
  if (y.empty()) throw NumericFault();
  const auto [yMin, yMax] = ExtremesOf(y, look);
  statistics.InputYMin = y[yMin];
  statistics.InputYMax = y[yMax];
  statistics.X.assign(data.X.size(), {});
  for (std::size_t v = 0; v < data.X.size(); ++v) {
    const std::vector<double>& column = data.X[v];
    VariableStatistics& x = statistics.X[v];
    const auto [xMin, xMax] = ExtremesOf(column, look);
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
    TakeSums(sums[c], c + 1 < sums.size() ? sums[c + 1] : unused, y.size(), look);
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

// What ends the work of an aborted form.
struct Unwanted {};

}  // namespace

std::vector<double> CopyInPieces(const std::vector<double>& column, const LookAround& look) {
  std::vector<double> copy;
  ReserveLarge(copy, column.size());
  InPieces(column.size(), look, [&](std::size_t from, std::size_t end) {
    copy.insert(copy.end(), column.data() + from, column.data() + end);
  });
  return copy;
}

std::shared_ptr<const FitInput> TakeFitInput(const SolveData& data,
                                             const std::function<InputPoints(const LookAround&)>& table,
                                             ThreadTeam* threads, SolveForm& form) {
  const auto input = std::make_shared<FitInput>();
  std::atomic<bool> unwanted = false, tableTaken = false;
  const auto work = [&](std::size_t member) {
    // The form is the calling thread's alone.
    const LookAround look = [&, member] {
      if (member == 0) {
        form.Pulse();
        if (form.Aborted) unwanted = true;
      }
      if (unwanted) throw Unwanted();
    };
    if (member == 0) {
      try {
        TakeStatistics(data, input->Statistics, look);
        input->IsWhole = true;
      } catch (const NumericFault&) {
      }
    }
    if (!tableTaken.exchange(true)) input->Points = std::make_shared<const InputPoints>(table(look));
  };
  try {
    if (threads)
      threads->Run(work);
    else
      work(0);
  } catch (const Unwanted&) {
    return nullptr;
  }
  return input;
}

}  // namespace quorvex
