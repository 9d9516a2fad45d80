#include "engine/RobustLoss.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace quorvex {

double LossConstant(LossKind loss) {
  static constexpr std::array<double, kLossNames.size()> kConstants = {HUGE_VAL, 1.345, 1.2871, 2.385, 4.685};
  return kConstants[static_cast<std::size_t>(loss)];
}

double LossWeight(LossKind loss, double u) {
  const double k = LossConstant(loss), v = u / k * (u / k);
  switch (loss) {
    case LossKind::Huber:
      return std::abs(u) <= k ? 1 : k / std::abs(u);
    case LossKind::SoftL1:
      return 1 / std::sqrt(1 + v);
    case LossKind::Cauchy:
      return 1 / (1 + v);
    case LossKind::Bisquare:
      return v < 1 ? (1 - v) * (1 - v) : 0;
    case LossKind::Squares:
      break;
  }
  return 1;
}

double LossSlope(LossKind loss, double u) {
  const double v = u / LossConstant(loss) * (u / LossConstant(loss)), weight = LossWeight(loss, u);
  switch (loss) {
    case LossKind::Huber:
      return weight < 1 ? 0 : 1;
    case LossKind::SoftL1:
      return weight * weight * weight;
    case LossKind::Cauchy:
      return weight * (2 * weight - 1);
    case LossKind::Bisquare:
      return v < 1 ? (1 - v) * (1 - 5 * v) : 0;
    case LossKind::Squares:
      break;
  }
  return 1;
}

bool Redescends(LossKind loss) { return loss == LossKind::Cauchy || loss == LossKind::Bisquare; }

}  // namespace quorvex
