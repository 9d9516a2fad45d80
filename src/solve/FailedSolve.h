#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "solve/FailedFit.h"

namespace quorvex {

// A coefficient and what its search began with, as the user reads it: "1", "1 (constant)", "1 to 5 in 3 steps",
// "1, at least 0".
struct EstimateText {
  std::string Name, Value;
};

// Where the user goes from a failed solve.
enum class WayOn { Close, InitialEstimates, ViewLog, TryHarder };

// What a solve failed at, and the ways on from there. What is said of a fit is found out when it is asked for.
class FailedSolve {
 public:
  // `fits` are at least one; data and locale outlive the object.
  FailedSolve(std::string message, std::vector<FailedFit> fits, const SolveData& data, const LocaleText& locale);

  const std::string& Message() const { return message_; }  // how the solve went
  const std::vector<FailedFit>& Fits() const { return fits_; }
  const std::string& Name(std::size_t fit) const { return fits_[fit].Object.Name(); }
  std::string Reason(std::size_t fit) const;
  // Of a search; empty for a fit without one.
  std::vector<EstimateText> Estimates(std::size_t fit) const;

  // Whether a way on leads anywhere: other estimates are of use to a search alone, and a search from many starts has to
  // have points enough and not to have failed before.
  bool CanBeEstimated(std::size_t fit) const;
  bool CanTryHarder(std::size_t fit) const;

  // The fits that the user has chosen: estimates are given to the first, and all that can are tried harder.
  std::vector<std::size_t> Chosen = {0};

 private:
  std::string message_;
  std::vector<FailedFit> fits_;
  const SolveData& data_;
  const LocaleText& locale_;
};

}  // namespace quorvex
