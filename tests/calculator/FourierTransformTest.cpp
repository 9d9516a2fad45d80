#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>
#include <numeric>
#include <random>

#include "calculator/Curves.h"
#include "calculator/FourierTransform.h"

namespace quorvex {
namespace {

using std::numbers::pi;

Column Noise(std::size_t count) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> uniform(-1, 1);
  Column values(count);
  for (double& value : values) value = uniform(random);
  return values;
}

double SquareSum(const Column& values) { return std::inner_product(values.begin(), values.end(), values.begin(), 0.0); }

TEST(FourierTransform, FindsTheSinesOfASum) {
  constexpr std::size_t kCount = 256;
  Column y(kCount);
  for (std::size_t j = 0; j < kCount; ++j) {
    const double t = 2 * pi * static_cast<double>(j) / kCount;
    y[j] = 1.5 + 3 * std::sin(10 * t) + 0.5 * std::cos(40 * t);
  }
  const Spectrum spectrum = FourierTransform(y);
  for (std::size_t k = 0; k < kCount; ++k) {
    const double expected = k == 0                ? 1.5 * kCount
                            : k == 10 || k == 246 ? 1.5 * kCount
                            : k == 40 || k == 216 ? 0.25 * kCount
                                                  : 0;
    EXPECT_NEAR(spectrum.Magnitude[k], expected, 1e-12 * kCount) << k;
    EXPECT_EQ(spectrum.Frequency[k], static_cast<double>(k) / kCount);
  }
  // A sine begins a quarter of a turn behind a cosine.
  EXPECT_NEAR(spectrum.Phase[10], -pi / 2, 1e-12);
  EXPECT_NEAR(spectrum.Phase[246], pi / 2, 1e-12);
  EXPECT_NEAR(spectrum.Phase[40], 0, 1e-12);
}

TEST(FourierTransform, AgreesWithTheSumsThatDefineIt) {
  for (const std::size_t count : {1U, 2U, 3U, 7U, 16U, 33U}) {
    const Column y = Noise(count);
    const Spectrum spectrum = FourierTransform(y);
    const std::size_t n = spectrum.Magnitude.size();
    ASSERT_TRUE(n >= count && n < 2 * count);
    for (std::size_t k = 0; k < n; ++k) {
      std::complex<double> sum = 0;
      for (std::size_t j = 0; j < count; ++j)
        sum += std::polar(y[j], -2 * pi * static_cast<double>(j * k) / static_cast<double>(n));
      EXPECT_NEAR(std::abs(std::polar(spectrum.Magnitude[k], spectrum.Phase[k]) - sum), 0, 1e-13) << count << ' ' << k;
    }
  }
}

TEST(FourierTransform, KeepsTheEnergyOfItsValues) {  // Parseval
  for (const std::size_t count : {100U, 1000U, 4096U, 65536U, 65537U}) {
    const Column y = Noise(count);
    const Spectrum spectrum = FourierTransform(y);
    const auto n = static_cast<double>(spectrum.Magnitude.size());
    EXPECT_NEAR(SquareSum(spectrum.Magnitude) / (n * SquareSum(y)), 1, 1e-13) << count;
  }
}

TEST(FourierTransform, CarriesExtremesAsFarAsNumbersGo) {
  EXPECT_EQ(FourierTransform(Column{1e300, 1e300}).Magnitude, (Column{2e300, 0}));
  EXPECT_EQ(FourierTransform(Column{1e-300, 0}).Magnitude, (Column{1e-300, 1e-300}));
  EXPECT_EQ(ErrorOf([] { FourierTransform(Column{1.7e308, 1.7e308}); }), CalculatorError::Overflow);
}

}  // namespace
}  // namespace quorvex
