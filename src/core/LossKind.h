#pragma once

#include <array>
#include <string_view>

namespace quorvex {

// What a residual costs: its square, as in every fit by least squares, or something that grows slower, so that a few
// wild points don't decide (engine/RobustFit.h).
enum class LossKind : int { Squares = 0, Huber = 1, SoftL1 = 2, Cauchy = 3, Bisquare = 4 };
inline constexpr std::array<std::string_view, 5> kLossNames = {"Squares", "Huber", "SoftL1", "Cauchy", "Bisquare"};

}  // namespace quorvex
