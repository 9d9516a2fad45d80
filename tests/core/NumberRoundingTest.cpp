#include <gtest/gtest.h>

#include <cmath>

#include "core/NumberText.h"
#include "core/NumericFault.h"

namespace quorvex {
namespace {

TEST(RoundToInt16, RoundsTiesToEvenUpToTheEndsOfTheRange) {
  constexpr struct {
    double value;
    int rounded;
  } kRows[] = {{2.5, 2}, {3.5, 4}, {-2.5, -2}, {0.5, 0}, {1.4999, 1}, {32767.4, 32767}, {-32768.5, -32768}};
  for (const auto& row : kRows) EXPECT_EQ(RoundToInt16(row.value), row.rounded) << row.value;
  for (double beyond : {32767.5, -32768.6, 1e300, double{INFINITY}, double{NAN}})
    EXPECT_THROW(RoundToInt16(beyond), NumericFault) << beyond;
}

TEST(RoundToInt32, CoversTheRangeOf32Bits) {
  EXPECT_EQ(RoundToInt32(2147483647.4), 2147483647);
  EXPECT_EQ(RoundToInt32(-2147483648.5), -2147483647 - 1);
  for (double beyond : {2147483647.5, -2147483649.0, -1e300}) EXPECT_THROW(RoundToInt32(beyond), NumericFault);
}

}  // namespace
}  // namespace quorvex
