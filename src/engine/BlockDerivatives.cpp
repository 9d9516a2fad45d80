// Values and derivatives of a model over blocks of points, to the bit what they are point by point.

#include <algorithm>
#include <array>
#include <cmath>

#include "core/FaultFlags.h"
#include "engine/ModelClass.h"
#include "engine/Ridders.h"
#include "equation/ClosedForms.h"

namespace quorvex {
namespace {

using Columns = std::array<const double*, kMostIndependentVariables>;

Columns ColumnsFrom(const SolveData& data, std::size_t first) {
  Columns columns{};
  for (std::size_t v = 0; v < data.X.size(); ++v) columns[v] = data.X[v].data() + first;
  return columns;
}

using Block = std::array<double, kBlock>;

// One round of the extrapolation at n points: `quotient` is the round's first order, `tableau` holds the orders of the
// round before and receives those of this one. Points with a negative estimate have their answer. Returns whether any
// point goes on.
[[gnu::noinline]] bool ExtrapolateRound(std::size_t k, std::size_t n, Block* tableau, const Block& quotient,
                                        double* estimate, double* answer) {
  Block below = quotient;  // order j - 1 of this round
  double factor = kRidderFactor;
  Block diagonal;  // order k - 1 of the round before
  std::copy_n(tableau[k - 1].begin(), n, diagonal.begin());
  for (std::size_t j = 2; j <= k; ++j) {
    double* const before = tableau[j - 1].data();  // order j - 1 of the round before, then of this one
    for (std::size_t i = 0; i < n; ++i) {
      const double cell = (below[i] * factor - before[i]) / (factor - 1.0);
      const double error = std::max(std::abs(cell - below[i]), std::abs(cell - before[i]));
      const bool better = error <= estimate[i];
      estimate[i] = better ? error : estimate[i];
      answer[i] = better ? cell : answer[i];
      before[i] = below[i];
      below[i] = cell;
    }
    factor *= kRidderFactor;
  }
  std::copy_n(below.begin(), n, tableau[k].begin());
  bool goesOn = false;
  for (std::size_t i = 0; i < n; ++i) {
    const bool stops = std::abs(below[i] - diagonal[i]) >= kRidderSafe * estimate[i];
    estimate[i] = stops ? -1.0 : estimate[i];
    goesOn |= !stops;
  }
  return goesOn;
}

}  // namespace

bool ModelClass::EvaluateBlock(const SolveData& data, std::size_t first, std::size_t n, double* y) {
  const Columns columns = ColumnsFrom(data, first);
  if (!UserType) {
    std::fill_n(y, n, 0.0);
    if (builtIn_ == nullptr) return true;
    ClearFaultFlags();
    Value(*builtIn_, columns.data(), n, values_.data(), y);
    return !FaultFlagsRaised();
  }
  if (!program_) program_ = std::make_unique<BlockProgram>(Compiled());
  return program_->Supported() && program_->Evaluate(columns, n, values_, Statistics, y);
}

bool ModelClass::DifferentiateBlock(const SolveData& data, std::size_t first, std::size_t n, bool analytical, double* y,
                                    double* const* dyda) {
  if (!UserType) return ClosedFormBlock(data, first, n, y, dyda);
  if (!EvaluateBlock(data, first, n, y)) return false;
  if (!DerivativeModels_.empty()) return TypedDerivativesBlock(data, first, n, dyda);
  for (std::size_t c = 0; c < values_.size(); ++c) {
    const double mask = coefficients_[c].Constant;
    if (mask == 0) {
      std::fill_n(dyda[c], n, 0.0);
      continue;
    }
    const bool differentiated =
        analytical ? ExtrapolateBlock(c, n, dyda[c]) : CentredQuotientBlock(c, InitialStep(values_[c]), n, dyda[c]);
    if (!differentiated) return false;
    if (mask != 1)
      for (std::size_t i = 0; i < n; ++i) dyda[c][i] *= mask;
  }
  return true;
}

bool ModelClass::ClosedFormBlock(const SolveData& data, std::size_t first, std::size_t n, double* y,
                                 double* const* dyda) {
  if (builtIn_ == nullptr) return false;
  const Columns columns = ColumnsFrom(data, first);
  ClearFaultFlags();
  ValueAndDerivatives(*builtIn_, columns.data(), n, values_.data(), y, dyda);
  return !FaultFlagsRaised();
}

bool ModelClass::TypedDerivativesBlock(const SolveData& data, std::size_t first, std::size_t n, double* const* dyda) {
  for (std::size_t c = 0; c < DerivativeModels_.size(); ++c) {
    TakeParentsValues(DerivativeModels_[c]);
    if (!DerivativeModels_[c].Model->EvaluateBlock(data, first, n, dyda[c])) return false;
    for (std::size_t i = 0; i < n; ++i) dyda[c][i] *= coefficients_[c].Constant;
  }
  return true;
}

bool ModelClass::CentredQuotientBlock(std::size_t coefficient, double h, std::size_t n, double* quotient) {
  const double a = values_[coefficient];
  Block below;
  if (!program_->EvaluateVaried(coefficient, a + h, quotient) ||
      !program_->EvaluateVaried(coefficient, a - h, below.data()))
    return false;
  for (std::size_t i = 0; i < n; ++i) quotient[i] = (quotient[i] - below[i]) / (2.0 * h);
  return !FaultFlagsRaised();
}

bool ModelClass::ExtrapolateBlock(std::size_t coefficient, std::size_t n, double* answer) {
  static_assert(kRidderRounds >= 2);
  std::array<Block, kRidderRounds + 1> tableau;
  Block quotient, estimate;
  double h = InitialStep(values_[coefficient]);
  if (!CentredQuotientBlock(coefficient, h, n, tableau[1].data())) return false;
  std::copy_n(tableau[1].begin(), n, answer);
  estimate.fill(1e30);
  for (std::size_t k = 2; k <= kRidderRounds; ++k) {
    h /= kRidderShrink;
    if (!CentredQuotientBlock(coefficient, h, n, quotient.data())) return false;
    const bool goesOn = ExtrapolateRound(k, n, tableau.data(), quotient, estimate.data(), answer);
    if (FaultFlagsRaised()) return false;
    if (!goesOn) break;
  }
  return true;
}

}  // namespace quorvex
