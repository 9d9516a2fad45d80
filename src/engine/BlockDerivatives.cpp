// Derivatives over blocks of points, to the bit what they are point by point.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numeric>

#include "core/AlignedBlock.h"
#include "core/DerivativeKind.h"
#include "core/FaultFlags.h"
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

using Block = AlignedBlock;

// Beyond all that a model adds to the product of this and a derivative, and far from where such products overflow.
constexpr double kWideStep = 0x1p100;

// The extrapolation at the points of a block that still go on, and at few that don't, at the front of each array.
struct Extrapolation {
  std::size_t Count;                             // of all these points
  std::array<std::uint16_t, kBlock> Point;       // where in the block they stand,
  std::array<std::uint16_t, kBlock> Computed;    // and where among those that the model is computed at
  std::array<Block, kRidderRounds + 1> Tableau;  // by order, from 1: the round before, then the present one
  Block Quotient, Estimate, Answer;
  std::array<std::uint64_t, kBlock> Stops;    // 1 for a point that would stop after the present round, else 0
  std::array<std::uint64_t, kBlock> Stopped;  // 1 for one that has stopped, and is computed along until they close up
  std::size_t Live;                           // that have not
};

// One round from its quotients: fills the orders 1 to k, notes where the best answer so far is beaten, and who stops.
[[gnu::always_inline]] inline void Round(std::size_t k, Extrapolation& e) {
  const std::size_t n = e.Count;
  Block below = e.Quotient;  // order j - 1 of this round
  std::copy_n(e.Tableau[k - 1].begin(), n, e.Quotient.begin());
  double factor = kRidderFactor;
  for (std::size_t j = 2; j <= k; ++j) {
    double* const before = e.Tableau[j - 1].data();  // order j - 1 of the round before, then of this one
    const double divisor = factor - 1.0;
    for (std::size_t i = 0; i < n; ++i) {
      const double cell = (below[i] * factor - before[i]) / divisor;
      const double error = std::max(std::abs(cell - below[i]), std::abs(cell - before[i]));
      const bool better = error <= e.Estimate[i];
      e.Estimate[i] = better ? error : e.Estimate[i];
      e.Answer[i] = better ? cell : e.Answer[i];
      before[i] = below[i];
      below[i] = cell;
    }
    factor *= kRidderFactor;
  }
  std::copy_n(below.begin(), n, e.Tableau[k].begin());
  for (std::size_t i = 0; i < n; ++i)  // what the diagonal was before stands in Quotient
    e.Stops[i] = std::abs(below[i] - e.Quotient[i]) >= kRidderSafe * e.Estimate[i] ? 1 : 0;
}

[[gnu::noinline]] void RunRound(std::size_t k, Extrapolation& e) {
  const auto round = [](auto, std::size_t number, Extrapolation* of) __attribute__((always_inline)) {
    Round(number, *of);
  };
  AtFullWidth(round, k, &e);
}

// Hands out the answers of the points that stop after round k, and where they have become many closes up the others.
void TakeStops(std::size_t k, Extrapolation& e, double* answer) {
  std::array<std::uint16_t, kBlock> kept, gone;
  std::size_t count = 0, goneCount = 0;
  for (std::size_t i = 0; i < e.Count; ++i) {  // each is noted in both lists, lest the processor guess which
    const std::uint64_t stops = k == kRidderRounds ? 1 : e.Stops[i];
    kept[count] = gone[goneCount] = static_cast<std::uint16_t>(i);
    goneCount += stops & (e.Stopped[i] ^ 1);
    e.Stopped[i] |= stops;
    count += e.Stopped[i] ^ 1;
  }
  for (std::size_t m = 0; m < goneCount; ++m) answer[e.Point[gone[m]]] = e.Answer[gone[m]];
  e.Live = count;
  // Moving a point with all of its tableau costs as much as a round of it.
  if (count > e.Count / 4 * 3) return;
  e.Count = count;
  const auto closeUp = [&](auto& row) {
    for (std::size_t m = 0; m < count; ++m) row[m] = row[kept[m]];
  };
  closeUp(e.Point);
  closeUp(e.Computed);
  closeUp(e.Estimate);
  closeUp(e.Answer);
  for (std::size_t j = 1; j <= k; ++j) closeUp(e.Tableau[j]);
  std::fill_n(e.Stopped.begin(), count, 0);
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
  Block quotient;
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
  Block above;
  const std::array<ChainStep, 2> divided = {ChainStep{ChainOp::SubtractFrom, {above.data(), 0}},
                                            ChainStep{ChainOp::Divide, {nullptr, 2.0 * h}}};
  return program.EvaluateVaried(coefficient, a + h, above.data()) &&
         program.EvaluateVaried(coefficient, a - h, quotient, divided);
}

bool Differentiator::OneSidedQuotientBlock(std::size_t coefficient, double h, std::size_t n, double* quotient) {
  const double a = model_.CoefficientValues[coefficient];
  BlockProgram& program = model_.compiled_->OverBlocks();
  Block values, absolute;
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
  e.Stopped.fill(0);
  std::iota(e.Point.begin(), e.Point.end(), std::uint16_t{0});
  e.Computed = e.Point;
  e.Estimate.fill(1e30);
  Block quotient;
  if (!CentredQuotientBlock(coefficient, h, e.Tableau[1].data())) return false;
  e.Answer = e.Tableau[1];
  std::size_t computed = n;  // points at which the model is computed
  // Whatever the outcome, the next coefficient finds all points again.
  const auto finish = [&] {
    program.Widen();
    return e.Live == 0;
  };
  for (std::size_t k = 2; e.Live > 0; ++k) {
    h /= kRidderShrink;
    if (!CentredQuotientBlock(coefficient, h, quotient.data())) return finish();
    if (e.Count == computed)
      e.Quotient = quotient;
    else
      for (std::size_t i = 0; i < e.Count; ++i) e.Quotient[i] = quotient[e.Computed[i]];
    RunRound(k, e);
    if (FaultFlagsRaised()) return finish();  // no NaN may decide who stops
    TakeStops(k, e, answer);
    // Few points go on for long, and gathering what they need pays after one round.
    if (e.Live > 0 && e.Count <= computed / 4 * 3 &&
        program.Narrow(coefficient, std::span(e.Computed).first(e.Count))) {
      computed = e.Count;
      std::iota(e.Computed.begin(), e.Computed.end(), std::uint16_t{0});
    }
  }
  return finish();
}

}  // namespace quorvex
