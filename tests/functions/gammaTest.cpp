#include <gtest/gtest.h>

#include "equation/Checked.h"

namespace quorvex {
namespace {

TEST(factrl, IsATableUpTo32AndAFunctionOfItsLogarithmAbove) {
  EXPECT_NE(Value("fact", {33}), 33 * Value("fact", {32}));
  EXPECT_NEAR(Value("factln", {170}), std::log(7.2574156153079990e306), 1e-9);
}

}  // namespace
}  // namespace quorvex
