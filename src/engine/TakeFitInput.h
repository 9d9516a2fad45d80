#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "core/SolveData.h"
#include "engine/FitResult.h"

namespace quorvex {

class SolveForm;
class ThreadTeam;

// Called on the way by what goes over many points: throws where nobody wants the outcome any more.
using LookAround = std::function<void()>;

// Calls `each(from, end)` for one piece of n points after the other, with a look between two: a piece takes less than
// a thousandth of a second, and ends with a block but the last.
template <class Each>
void InPieces(std::size_t n, const LookAround& look, Each each) {
  constexpr std::size_t kPiece = std::size_t{1} << 18;
  for (std::size_t from = 0; from < n; from += kPiece) {
    if (from > 0) look();
    each(from, std::min(from + kPiece, n));
  }
}

// A copy for long, on large pages.
std::vector<double> CopyInPieces(const std::vector<double>& column, const LookAround& look);

// What a fit notes of its data: their statistics and, beside them where there are threads, the points as `table` makes
// them. Null where the form is aborted.
std::shared_ptr<const FitInput> TakeFitInput(const SolveData& data,
                                             const std::function<InputPoints(const LookAround&)>& table,
                                             ThreadTeam* threads, SolveForm& form);

}  // namespace quorvex
