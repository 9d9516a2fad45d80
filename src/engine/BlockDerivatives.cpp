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

// Of a round: the values on both sides, by how much the coefficient differs between them, and its number.
struct Sides {
  const double *Above, *Below;
  double Width;
  std::size_t Round;
};

// A round at the points of a register: fills the orders up to its own, and takes what is better than the answer so
// far. Adds 1 to `live` where a point goes on.
template <std::size_t lanes>
[[gnu::always_inline]] inline void RoundAt(std::size_t i, const Sides& sides, Extrapolation& e,
                                           typename VectorRegister<lanes>::Mask& live) {
  using V = typename VectorRegister<lanes>::Type;
  using Mask = typename VectorRegister<lanes>::Mask;
  const auto load = [i](V & v, const double* row) __attribute__((always_inline)) {
    std::memcpy(&v, row + i, sizeof v);
  };
  const auto store = [i](const V& v, AlignedBlock& row) __attribute__((always_inline)) {
    std::memcpy(row.data() + i, &v, sizeof v);
  };
  const auto distance = [](const V& a, const V& b, V& size) __attribute__((always_inline)) {
    size = reinterpret_cast<V>(reinterpret_cast<Mask>(a - b) & std::numeric_limits<std::int64_t>::max());
  };
  const std::size_t k = sides.Round;
  V above, below, before{}, estimate = 1e30 - V{}, answer;
  load(above, sides.Above);
  load(below, sides.Below);
  V cell = (above - below) / sides.Width;
  load(answer, k == 2 ? e.Tableau[1].data() : e.Answer.data());
  if (k > 2) load(estimate, e.Estimate.data());
  for (std::size_t j = 2; j <= k; ++j) {
    below = cell;
    load(before, e.Tableau[j - 1].data());
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

[[gnu::noinline]] void RunRound(const Sides& sides, Extrapolation& e) {
  const auto round = [](auto lanes, const Sides* from, Extrapolation* of) __attribute__((always_inline)) {
    const Sides at = *from;
    const std::size_t count = of->Count;
    if (at.Round == 1) {
      for (std::size_t i = 0; i < Filled(count); ++i) of->Tableau[1][i] = (at.Above[i] - at.Below[i]) / at.Width;
      return;
    }
    typename VectorRegister<lanes>::Mask live{};
    for (std::size_t i = 0; i < count; i += lanes) RoundAt<lanes>(i, at, *of, live);
    of->Live = 0;
    for (std::size_t lane = 0; lane < lanes; ++lane) of->Live += static_cast<std::size_t>(live[lane]);
  };
  AtFullWidth(round, &sides, &e);
  if (sides.Round == kRidderRounds) e.Live = 0;
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
                                        double* y, double* const* room, const double** dyda) {
  std::copy_n(room, model_.Coefficients.size(), dyda);
  if (!model_.UserType) return ClosedFormBlock(data, first, n, y, room);
  // First of all, since the block's program keeps what does not depend on a varied coefficient from here.
  if (model_.typed_)
    return model_.EvaluateBlock(data.X, first, n, y) && model_.typed_->OverBlock(model_, data, first, n, room);
  model_.Compiled();
  BlockProgram& program = model_.compiled_->OverBlocks();
  const bool sweeps = method == DerivativeKind::Exact && program.HasGradient();
  const auto next = sweeps ? BlockProgram::Next::Gradient : BlockProgram::Next::Differences;
  if (!program.Supported() ||
      !program.Evaluate(ColumnsFrom(data.X, first), n, model_.CoefficientValues, model_.Statistics, y, next))
    return false;
  if (sweeps) return SweptBlock(n, room, dyda);
  return NumericalBlock(n, method != DerivativeKind::Central, room);
}

bool Differentiator::SweptBlock(std::size_t n, double* const* room, const double** dyda) {
  for (std::size_t c = 0; c < model_.Coefficients.size(); ++c)
    dyda[c] = model_.Coefficients[c].IsHeld() ? nullptr : room[c];
  model_.compiled_->OverBlocks().Gradient(dyda);
  if (FaultFlagsRaised()) return false;
  for (std::size_t c = 0; c < model_.Coefficients.size(); ++c) {
    const double mask = model_.Coefficients[c].Constant;
    if (dyda[c] != nullptr && mask == 1) continue;
    for (std::size_t i = 0; i < n; ++i) room[c][i] = dyda[c] == nullptr ? 0 : dyda[c][i] * mask;
    dyda[c] = room[c];
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
  const CatalogueModel* const builtIn = model_.BuiltIn();
  if (builtIn == nullptr) return false;
  const PointColumns columns = ColumnsFrom(data.X, first);
  ClearFaultFlags();
  ValueAndDerivatives(*builtIn, columns.data(), n, model_.CoefficientValues.data(), y, dyda);
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
  const double a = model_.CoefficientValues[coefficient];
  BlockProgram& program = model_.compiled_->OverBlocks();
  const bool variesAt = program.VariesAt(coefficient);
  Extrapolation e(n);
  AlignedBlock values, others;
  for (std::size_t k = 1; e.Live > 0;) {
    const std::span<const std::uint16_t> points = e.Points();
    const std::size_t size = points.size();
    // Where the points are few, both sides of several rounds are computed as one block. Most go through three of them.
    const std::size_t together =
        variesAt ? std::min({kBlock / (2 * size), k == 1 ? kMostTogether : 2, kRidderRounds + 1 - k}) : 0;
    std::array<Sides, kMostTogether> rounds;
    if (together > 0) {
      std::array<double, 2 * kMostTogether> at;
      for (std::size_t r = 0; r < together; ++r, h /= kRidderShrink) {
        at[2 * r] = a + h;
        at[2 * r + 1] = a - h;
        const double* const above = values.data() + 2 * r * size;
        rounds[r] = {above, above + size, 2.0 * h, k + r};
      }
      if (!program.EvaluateVariedAt(coefficient, points, std::span(at).first(2 * together), values.data()))
        return false;
    } else {
      if (!program.EvaluateVaried(coefficient, a + h, values.data()) ||
          !program.EvaluateVaried(coefficient, a - h, others.data()))
        return false;
      e.Fill(values);
      e.Fill(others);
      rounds[0] = {values.data(), others.data(), 2.0 * h, k};
      h /= kRidderShrink;
    }
    const std::size_t end = k + std::max<std::size_t>(together, 1);
    for (std::size_t r = 0; k < end && e.Live > 0; ++r, ++k) RunRound(rounds[r], e);
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
