// Derivatives over blocks of points, to the bit what they are point by point.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

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

// What a centred quotient of order j - 1 is multiplied with for order j, from 2.
constexpr auto kFactors = [] {
  std::array<double, kRidderRounds + 1> factors{};
  factors[2] = kRidderFactor;
  for (std::size_t j = 3; j <= kRidderRounds; ++j) factors[j] = factors[j - 1] * kRidderFactor;
  return factors;
}();

// The extrapolation at the points of a block that still go on, and at few that don't, at the front of each array.
struct Extrapolation {
  std::size_t Count;                                    // of all these points
  std::size_t Live;                                     // of those that go on
  bool All;                                             // whether they are all of the block's, in its order,
  std::array<std::uint16_t, kBlock> Point;              // or else where in the block they stand
  std::array<AlignedBlock, kRidderRounds + 1> Tableau;  // by order, from 1: the round before, then the present one
  AlignedBlock Quotient, Answer;
  AlignedBlock Estimate;  // negative where a point has stopped, so that nothing is better and it would stop again
};

// Round k at the points of a register: fills the orders 1 to k, and takes what is better than the answer so far. Adds
// 1 to `live` where a point goes on.
template <std::size_t lanes>
[[gnu::always_inline]] inline void RoundAt(std::size_t i, std::size_t k, Extrapolation& e,
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
  load(cell, e.Quotient);
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

// Round k at all points.
[[gnu::noinline]] void RunRound(std::size_t k, Extrapolation& e) {
  const auto round = [](auto lanes, std::size_t number, Extrapolation* of) __attribute__((always_inline)) {
    typename VectorRegister<lanes>::Mask live{};
    for (std::size_t i = 0; i < Filled(of->Count); i += lanes) RoundAt<lanes>(i, number, *of, live);
    of->Live = 0;
    for (std::size_t lane = 0; lane < lanes; ++lane) of->Live += static_cast<std::size_t>(live[lane]);
  };
  AtFullWidth(round, k, &e);
  if (k == kRidderRounds) e.Live = 0;
}

// The points that go on, and the last of them again until registers are full.
std::size_t ListLive(const Extrapolation& e, std::array<std::uint16_t, kBlock>& live) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < e.Count; ++i) {  // each is noted, lest the processor guess which
    live[count] = static_cast<std::uint16_t>(i);
    count += std::signbit(e.Estimate[i]) ? 0 : 1;
  }
  std::fill(live.begin() + count, live.begin() + Filled(count), live[count - 1]);
  return count;
}

void HandOut(const Extrapolation& e, double* answer) {
  if (e.All)
    std::copy_n(e.Answer.begin(), e.Count, answer);
  else
    for (std::size_t i = 0; i < e.Count; ++i) answer[e.Point[i]] = e.Answer[i];
}

// Leaves these points alone after round k.
void CloseUp(std::span<const std::uint16_t> points, std::size_t count, std::size_t k, Extrapolation& e) {
  const auto closeUp = [&](auto& row) {
    for (std::size_t m = 0; m < points.size(); ++m) row[m] = row[points[m]];
  };
  if (e.All)
    std::copy(points.begin(), points.end(), e.Point.begin());
  else
    closeUp(e.Point);
  closeUp(e.Estimate);
  closeUp(e.Answer);
  for (std::size_t j = 1; j <= k; ++j) closeUp(e.Tableau[j]);
  e.All = false;
  e.Count = count;
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

bool Differentiator::ExtrapolateBlock(std::size_t coefficient, double h, std::size_t n, double* answer) {
  BlockProgram& program = model_.compiled_->OverBlocks();
  Extrapolation e;
  e.Count = e.Live = n;
  e.All = true;
  for (AlignedBlock* const quotient : {&e.Tableau[1], &e.Quotient})
    std::fill(quotient->begin() + n, quotient->begin() + Filled(n), 0.0);  // these stop at once
  bool computed = CentredQuotientBlock(coefficient, h, e.Tableau[1].data());
  for (std::size_t k = 2; computed && e.Live > 0; ++k) {
    h /= kRidderShrink;
    computed = CentredQuotientBlock(coefficient, h, e.Quotient.data());
    if (!computed) break;
    RunRound(k, e);
    computed = !FaultFlagsRaised();  // no NaN may decide who stops
    // Moving points with all that they need pays after one round.
    if (e.Live > e.Count / 4 * 3 || !computed) continue;
    HandOut(e, answer);
    if (e.Live == 0) break;
    std::array<std::uint16_t, kBlock> live;
    const std::size_t count = ListLive(e, live);
    const std::span<const std::uint16_t> points = std::span(live).first(Filled(count));
    if (program.Narrow(coefficient, points)) CloseUp(points, count, k, e);
  }
  // Whatever the outcome, the next coefficient finds all points again.
  program.Widen();
  return computed;
}

}  // namespace quorvex
