#include <gtest/gtest.h>

#include "TableFile.h"
#include "functions/InverseTDistribution.h"

namespace quorvex {
namespace {

TEST(InverseTDistribution, AgreesWithTheTablesOfT) {
  constexpr double kP[] = {0.84, 0.95, 0.975, 0.995};
  for (const auto& row : TableRows("t_quantiles.txt", 2))
    for (std::size_t i = 0; i < 4; ++i) {
      const double df = Number(row[0]), t = Numbers(row[1])[i];
      // Half the fourth decimal, and what 1e-7 of the bisection and 3e-7 (of 1 - p) of betai mean by way of the
      // density.
      const double density =
          std::exp(std::lgamma((df + 1) / 2) - std::lgamma(df / 2) - (df + 1) / 2 * std::log1p(t * t / df)) /
          std::sqrt(df * 3.14159265358979);
      const double limit = 0.5e-4 + (1e-7 + 3e-7 * (1 - kP[i])) / density;
      const double found = InverseTDistribution(kP[i], df);
      EXPECT_NEAR(found, t, limit) << df << " " << kP[i];
      EXPECT_NEAR(found * 1e4, std::round(found * 1e4), 1e-9);
    }
}

TEST(InverseTDistribution, StaysWithinItsBounds) {
  EXPECT_EQ(InverseTDistribution(0.5, 5), 0.25);
  EXPECT_EQ(InverseTDistribution(0.9999, 1), 320);  // 3183.1 without the bound
  EXPECT_EQ(InverseTDistribution(0, 5), 0);
}

// Whatever was asked for before.
TEST(InverseTDistribution, GivesTheQuantilesOfConfidence) {
  for (const double df : {3.0, 35.0, 3.5, 3.0, 35.0, 1.0, 1e12}) {
    const std::array<double, 4> quantiles = ConfidenceQuantiles(df);
    EXPECT_EQ(quantiles[0], InverseTDistribution(0.84, df)) << df;
    EXPECT_EQ(quantiles[3], InverseTDistribution(0.995, df)) << df;
  }
}

}  // namespace
}  // namespace quorvex
