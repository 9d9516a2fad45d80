#include <gtest/gtest.h>

#include "TableFile.h"
#include "core/NumericFault.h"
#include "functions/InverseNormalDistribution.h"

namespace quorvex {
namespace {

TEST(InverseNormalDistribution, AgreesWithReferenceInBodyAndTails) {
  for (const auto& row : TableRows("normal_quantiles.txt", 2)) {
    const double z = Number(row[1]);
    EXPECT_NEAR(InverseNormalDistribution(Number(row[0])), z, 1e-15 * std::max(std::abs(z), 0.1)) << row[0];
  }
}

TEST(InverseNormalDistribution, InvertsTheDistributionEverywhere) {
  for (double p = 1e-9; p < 1; p = p * 1.07 + 1e-4) {
    const double z = InverseNormalDistribution(p);
    EXPECT_NEAR(std::erfc(-z / std::sqrt(2.0)) / 2, p, 1e-15) << p;
  }
}

TEST(InverseNormalDistribution, RefusesWhatIsNoProbability) {
  for (const double p : {0.0, 1.0, -0.1, 1.1, std::nan("")}) EXPECT_THROW(InverseNormalDistribution(p), NumericFault);
}

}  // namespace
}  // namespace quorvex
