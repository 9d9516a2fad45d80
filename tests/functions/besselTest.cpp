#include <gtest/gtest.h>

#include "equation/Checked.h"

namespace quorvex {
namespace {

TEST(bessj, VanishesWhereItsValueIsBelowAllDoubles) {
  EXPECT_EQ(Value("jn", {2, 0}), 0);
  EXPECT_EQ(Value("in", {5, 0}), 0);
  EXPECT_EQ(Value("jn", {32767, 1}), 0);
  EXPECT_EQ(Value("in", {32767, 1}), 0);
  for (double n : {0, 1, 5}) EXPECT_EQ(Value("kn", {n, 1e4}), 0) << n;
}

TEST(bessj, HasItsParityInTheOrder) {
  for (const char* word : {"jn", "in"})
    for (double n : {0, 1, 2, 3, 12})
      for (double x : {0.5, 5.0, 11.0, 40.0})
        EXPECT_EQ(Value(word, {n, -x}), (std::fmod(n, 2) == 1 ? -1 : 1) * Value(word, {n, x})) << word << n << " " << x;
}

TEST(bessj, ItsWordsTakeOrdersZeroAndOneFromTheirOwnRoutines) {
  for (const char kind : {'j', 'y', 'i', 'k'})
    for (const char order : {'0', '1'}) {
      const std::string general = {kind, 'n'}, own = {kind, order};
      EXPECT_EQ(Value(general, {double(order - '0'), 2.5}), Value(own, {2.5})) << own;
    }
}

}  // namespace
}  // namespace quorvex
