#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "core/NumericFault.h"
#include "functions/InverseNormalDistribution.h"

namespace quorvex {
namespace {

TEST(InverseNormalDistribution, AgreesWithReferenceInBodyAndTails) {
  constexpr struct {
    double p, z;
  } kCases[] = {{1e-300, -37.047096299361199237},
                {1e-20, -9.2623400897984075796},
                {1e-5, -4.2648907939228246102},
                {0.001, -3.0902323061678135354},
                {0.02425, -1.9729610513118848376},
                {0.1, -1.2815515655446004353},
                {0.3, -0.52440051270804081597},
                {0.4999, -0.00025066283008800749239},
                {0.5, 0},
                {0.75, 0.6744897501960817432},
                {0.975, 1.9599639845400538556},
                {0.999999, 4.7534243088170877657}};  // mpmath at 50 digits, of the doubles nearest to p
  for (const auto& c : kCases)
    EXPECT_NEAR(InverseNormalDistribution(c.p), c.z, 1e-15 * std::max(std::abs(c.z), 0.1)) << c.p;
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
