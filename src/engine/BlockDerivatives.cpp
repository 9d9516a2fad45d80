// Derivatives over blocks of points, to the bit what they are point by point.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <numeric>

#include "core/AlignedBlock.h"
#include "core/DerivativeKind.h"
#include "core/FaultFlags.h"
#include "core/VectorRegister.h"
#include "core/VectorWidth.h"
#include "engine/CompiledModel.h"
#include "engine/Differentiator.h"
#include "engine/ModelClass.h"
#include "engine/PointColumns.h"
#include "engine/Ridders.h"
#include "engine/TypedDerivatives.h"
#include "equation/ClosedForms.h"

namespace quorvex {
namespace {

// Beyond all that a model adds to the product of this and a derivative, and far from where such products overflow.
constexpr double kWideStep = 0x1p100;

// The widest register has so many lanes. Points are extrapolated in as many as fill registers of any width.
constexpr std::size_t kWidest = 8;
constexpr std::size_t Filled(std::size_t count) { return (count + kWidest - 1) / kWidest * kWidest; }

// So many rounds are computed at once.
constexpr std::size_t kMostTogether = 3;

// What a centred quotient of order j - 1 is multiplied with for order j, from 2.
constexpr auto kFactors = [] {
  std::array<double, kRidderRounds + 1> factors{};
  factors[2] = kRidderFactor;
  for (std::size_t j = 3; j <= kRidderRounds; ++j) factors[j] = factors[j - 1] * kRidderFactor;
  return factors;
}();

// The extrapolation at the points of a block that still go on, and at few that don't, at the front of each array.
struct Extrapolation {
  explicit Extrapolation(std::size_t n) : Count(n), Live(n) {
    std::iota(Point.begin(), Point.begin() + n, std::uint16_t{0});
    Fill(Point);
  }

  std::span<const std::uint16_t> Points() const { return std::span(Point).first(Filled(Count)); }
  // Behind the points their last one again, until registers are full.
  void Fill(auto& row) const { std::fill(row.begin() + Count, row.begin() + Filled(Count), row[Count - 1]); }

  std::size_t Count;                                    // of all these points
  std::size_t Live;                                     // of those that go on
  std::array<std::uint16_t, kBlock> Point;              // where in the block they stand
  std::array<AlignedBlock, kRidderRounds + 1> Tableau;  // by order, from 1: the round before, then the present one
  AlignedBlock Answer;
  AlignedBlock Estimate;  // negative where a point has stopped, so that nothing is better and it would stop again
};

// Round k at the points of a register: fills the orders 1 to k, and takes what is better than the answer so far. Adds
// 1 to `live` where a point goes on.
template <std::size_t lanes>
[[gnu::always_inline]] inline void RoundAt(std::size_t i, std::size_t k, const AlignedBlock& quotient, Extrapolation& e,
                                           typename VectorRegister<lanes>::Mask& live) {
  using V = typename VectorRegister<lanes>::Type;
  using Mask = typename VectorRegister<lanes>::Mask;
  const auto load = [i](V & v, const AlignedBlock& row) __attribute__((always_inline)) {
    std::memcpy(&v, row.data() + i, sizeof v);
  };
  const auto store = [i](const V& v, AlignedBlock& row) __attribute__((always_inline)) {
    std::memcpy(row.data() + i, &v, sizeof v);
  };
  const auto distance = [](const V& a, const V& b, V& size) __attribute__((always_inline)) {
    size = reinterpret_cast<V>(reinterpret_cast<Mask>(a - b) & std::numeric_limits<std::int64_t>::max());
  };
  V cell, before{}, estimate = 1e30 - V{}, answer;
  load(cell, quotient);
  load(answer, k == 2 ? e.Tableau[1] : e.Answer);
  if (k > 2) load(estimate, e.Estimate);
  for (std::size_t j = 2; j <= k; ++j) {
    const V below = cell;
    load(before, e.Tableau[j - 1]);
    store(below, e.Tableau[j - 1]);
    cell = (below * kFactors[j] - before) / (kFactors[j] - 1.0);
    V fromBelow, fromBefore;
    distance(cell, below, fromBelow);
    distance(cell, before, fromBefore);
    const V error = fromBelow < fromBefore ? fromBefore : fromBelow;
    const Mask better = error <= estimate;
    estimate = better ? error : estimate;
    answer = better ? cell : answer;
  }
  store(cell, e.Tableau[k]);
  store(answer, e.Answer);
  V alongDiagonal;
  distance(cell, before, alongDiagonal);
  const Mask stops = alongDiagonal >= kRidderSafe * estimate;
  store(stops ? -1.0 - V{} : estimate, e.Estimate);
  live -= ~stops;
}

// Round k at all points, with its quotients.
[[gnu::noinline]] void RunRound(std::size_t k, const AlignedBlock& quotient, Extrapolation& e) {
  if (k == 1) {
    std::copy_n(quotient.begin(), Filled(e.Count), e.Tableau[1].begin());
    return;
  }
  const auto round =
      [](auto lanes, std::size_t number, const AlignedBlock* from, Extrapolation* of) __attribute__((always_inline)) {
    typename VectorRegister<lanes>::Mask live{};
    for (std::size_t i = 0; i < of->Count; i += lanes) RoundAt<lanes>(i, number, *from, *of, live);
    of->Live = 0;
    for (std::size_t lane = 0; lane < lanes; ++lane) of->Live += static_cast<std::size_t>(live[lane]);
  };
  AtFullWidth(round, k, &quotient, &e);
  if (k == kRidderRounds) e.Live = 0;
}

// Leaves the points that go on after round k.
void CloseUp(std::size_t k, Extrapolation& e) {
  std::array<std::uint16_t, kBlock> live;
  std::size_t count = 0;
  for (std::size_t i = 0; i < e.Count; ++i) {  // each is noted, lest the processor guess which
    live[count] = static_cast<std::uint16_t>(i);
    count += std::signbit(e.Estimate[i]) ? 0 : 1;
  }
  e.Count = e.Live = count;
  e.Fill(live);
  for (std::size_t m = 0; m < Filled(count); ++m) {  // from behind, or from where the last one came to stand
    const std::size_t from = live[m];
    e.Point[m] = e.Point[from];
    e.Estimate[m] = e.Estimate[from];
    e.Answer[m] = e.Answer[from];
    for (std::size_t j = 1; j <= k; ++j) e.Tableau[j][m] = e.Tableau[j][from];
  }
}

}  // namespace

bool Differentiator::DifferentiateBlock(const SolveData& data, std::size_t first, std::size_t n, DerivativeKind method,
                                        double* y, double* const* dyda) {
  if (!model_.UserType) return ClosedFormBlock(data, first, n, y, dyda);
  // First of all, since the block's program keeps what does not depend on a varied coefficient from here.
  if (model_.typed_)
    return model_.EvaluateBlock(data.X, first, n, y) && model_.typed_->OverBlock(model_, data, first, n, dyda);
  model_.Compiled();
  BlockProgram& program = model_.compiled_->OverBlocks();
  const bool sweeps = method == DerivativeKind::Exact && program.HasGradient();
  const auto next = sweeps ? BlockProgram::Next::Gradient : BlockProgram::Next::Differences;
  if (!program.Supported() ||
      !program.Evaluate(ColumnsFrom(data.X, first), n, model_.CoefficientValues, model_.Statistics, y, next))
    return false;
  if (sweeps) return SweptBlock(n, dyda);
  return NumericalBlock(n, method != DerivativeKind::Central, dyda);
}

bool Differentiator::SweptBlock(std::size_t n, double* const* dyda) {
  std::array<double*, kMostCoefficients> wanted;
  for (std::size_t c = 0; c < model_.Coefficients.size(); ++c)
    wanted[c] = model_.Coefficients[c].IsHeld() ? nullptr : dyda[c];
  model_.compiled_->OverBlocks().Gradient(wanted.data());
  if (FaultFlagsRaised()) return false;
  for (std::size_t c = 0; c < model_.Coefficients.size(); ++c) {
    const double mask = model_.Coefficients[c].Constant;
    if (wanted[c] == nullptr)
      std::fill_n(dyda[c], n, 0.0);
    else if (mask != 1)
      for (std::size_t i = 0; i < n; ++i) dyda[c][i] *= mask;
  }
  return true;
}

bool Differentiator::NumericalBlock(std::size_t n, bool extrapolate, double* const* dyda) {
  for (std::size_t c = 0; c < model_.CoefficientValues.size(); ++c) {
    const double mask = model_.Coefficients[c].Constant;
    if (model_.Coefficients[c].IsHeld()) {
      std::fill_n(dyda[c], n, 0.0);
      continue;
    }
    const DifferenceStep step = StepInside(model_.Coefficients[c], model_.CoefficientValues[c]);
    const bool differentiated = step.Inward != 0 ? OneSidedQuotientBlock(c, step.Inward, n, dyda[c])
                                : extrapolate    ? ExtrapolateBlock(c, step.Central, n, dyda[c])
                                                 : CentredQuotientBlock(c, step.Central, dyda[c]);
    if (!differentiated) return false;
    if (mask != 1)
      for (std::size_t i = 0; i < n; ++i) dyda[c][i] *= mask;
  }
  // EvaluateBlock has cleared the flags; what any of the quotients raised since then shows here.
  return !FaultFlagsRaised();
}

void Differentiator::SharpenDerivatives(std::size_t n, double* const* dyda) {
  if (!model_.UserType || model_.typed_) return;
  AlignedBlock quotient;
  for (std::size_t c = 0; c < model_.CoefficientValues.size(); ++c) {
    const double mask = model_.Coefficients[c].Constant;
    if (mask == 0 || !model_.compiled_->OverBlocks().LinearIn(c)) continue;
    ClearFaultFlags();
    // Where the wide step leads out of range, the derivative from the narrow one stays.
    if (!CentredQuotientBlock(c, kWideStep, quotient.data()) || FaultFlagsRaised()) continue;
    for (std::size_t i = 0; i < n; ++i) dyda[c][i] = mask * quotient[i];
  }
}

bool Differentiator::ClosedFormBlock(const SolveData& data, std::size_t first, std::size_t n, double* y,
                                     double* const* dyda) {
  if (model_.builtIn_ == nullptr) return false;
  const PointColumns columns = ColumnsFrom(data.X, first);
  ClearFaultFlags();
  ValueAndDerivatives(*model_.builtIn_, columns.data(), n, model_.CoefficientValues.data(), y, dyda);
  return !FaultFlagsRaised();
}

bool Differentiator::CentredQuotientBlock(std::size_t coefficient, double h, double* quotient) {
  const double a = model_.CoefficientValues[coefficient];
  BlockProgram& program = model_.compiled_->OverBlocks();
  AlignedBlock above;
  const std::array<ChainStep, 2> divided = {ChainStep{ChainOp::SubtractFrom, {above.data(), 0}},
                                            ChainStep{ChainOp::Divide, {nullptr, 2.0 * h}}};
  return program.EvaluateVaried(coefficient, a + h, above.data()) &&
         program.EvaluateVaried(coefficient, a - h, quotient, divided);
}

bool Differentiator::OneSidedQuotientBlock(std::size_t coefficient, double h, std::size_t n, double* quotient) {
  const double a = model_.CoefficientValues[coefficient];
  BlockProgram& program = model_.compiled_->OverBlocks();
  AlignedBlock values, absolute;
  std::fill_n(quotient, n, 0.0);
  std::fill_n(absolute.begin(), n, 0.0);
  for (std::size_t k = 0; k < kOneSided.size(); ++k) {
    if (!program.EvaluateVaried(coefficient, a + static_cast<double>(k) * h, values.data())) return false;
    for (std::size_t i = 0; i < n; ++i) {
      quotient[i] += kOneSided[k] * values[i];
      absolute[i] += std::abs(kOneSided[k] * values[i]);
    }
  }
  for (std::size_t i = 0; i < n; ++i) quotient[i] = IsRounding(quotient[i], absolute[i]) ? 0 : quotient[i] / h;
  return true;
}

bool Differentiator::CentredQuotientsAt(std::size_t coefficient, std::span<const double> steps,
                                        std::span<const std::uint16_t> points, AlignedBlock* quotients) {
  const double a = model_.CoefficientValues[coefficient];
  std::array<double, 2 * kMostTogether> values;
  for (std::size_t r = 0; r < steps.size(); ++r) {
    values[2 * r] = a + steps[r];
    values[2 * r + 1] = a - steps[r];
  }
  AlignedBlock sides;
  if (!model_.compiled_->OverBlocks().EvaluateVariedAt(coefficient, points, std::span(values).first(2 * steps.size()),
                                                       sides.data()))
    return false;
  for (std::size_t r = 0; r < steps.size(); ++r) {
    const double* const above = sides.data() + 2 * r * points.size();
    const std::array<ChainStep, 2> divided = {ChainStep{ChainOp::Subtract, {above + points.size(), 0}},
                                              ChainStep{ChainOp::Divide, {nullptr, 2.0 * steps[r]}}};
    ChainOverBlock({above, 0}, divided, points.size(), quotients[r].data());
  }
  return true;
}

bool Differentiator::ExtrapolateBlock(std::size_t coefficient, double h, std::size_t n, double* answer) {
  const bool variesAt = model_.compiled_->OverBlocks().VariesAt(coefficient);
  Extrapolation e(n);
  std::array<AlignedBlock, kMostTogether> quotients;
  for (std::size_t k = 1; e.Live > 0;) {
    // Where the points are few, both sides of several rounds are computed as one block. Most go through three of them.
    const std::span<const std::uint16_t> points = e.Points();
    const std::size_t together =
        !variesAt ? 0 : std::min({kBlock / (2 * points.size()), k == 1 ? kMostTogether : 2, kRidderRounds + 1 - k});
    std::array<double, kMostTogether> steps;
    for (std::size_t r = 0; r < std::max<std::size_t>(together, 1); ++r, h /= kRidderShrink) steps[r] = h;
    if (together > 0) {
      if (!CentredQuotientsAt(coefficient, std::span(steps).first(together), points, quotients.data())) return false;
    } else {
      if (!CentredQuotientBlock(coefficient, steps[0], quotients[0].data())) return false;
      e.Fill(quotients[0]);
    }
    for (std::size_t r = 0; r < std::max<std::size_t>(together, 1) && e.Live > 0; ++r) RunRound(k++, quotients[r], e);
    if (FaultFlagsRaised()) return false;  // no NaN may decide who stops
    // Moving points with all that they need pays after one round.
    const bool closesUp = variesAt && e.Live <= std::min(kBlock / 2, e.Count / 4 * 3);
    if (e.Live > 0 && !closesUp) continue;
    if (e.Count == n)
      std::copy_n(e.Answer.begin(), n, answer);
    else
      for (std::size_t i = 0; i < e.Count; ++i) answer[e.Point[i]] = e.Answer[i];
    if (e.Live > 0) CloseUp(k - 1, e);
  }
  return true;
}

}  // namespace quorvex
