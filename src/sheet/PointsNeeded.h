#pragma once

#include <cstddef>
#include <string>

#include "core/Prompter.h"

namespace quorvex {

// Whether that many complete rows are enough; refused where they are not, behind what keeps others from being points.
inline bool EnoughPointsToSolve(std::size_t points, Prompter& user, const std::string& others = "") {
  if (points < 3)
    user.Refuse(others + (others.empty() ? "" : " ") +
                "You need at least 3 data points in order to obtain a solution.");
  return points >= 3;
}

inline constexpr std::size_t kFewestPointsToPlot = 2;
inline constexpr const char* kTooFewPointsToPlot = "You need at least 2 data points in order to create a plot.";

}  // namespace quorvex
