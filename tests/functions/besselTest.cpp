#include <gtest/gtest.h>

#include <cmath>
#include <string>

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

TEST(bessj, FaultsForWrongOrdersAndOutsideItsDomain) {
  constexpr struct {
    const char* word;
    double n, x;
  } kRows[] = {{"jn", -1, 2}, {"yn", -1, 2},  {"in", -2, 2},  {"kn", -1, 2},  {"jn", 32768, 2},
               {"yn", 0, 0},  {"yn", 1, -10}, {"yn", 3, 0},   {"kn", 0, 0},   {"kn", 1, -1},
               {"kn", 4, -3}, {"yn", 200, 1}, {"in", 0, 714}, {"kn", 200, 1}, {"in", 1, -714}};
  for (const auto& row : kRows) EXPECT_FALSE(Checked(row.word, {row.n, row.x})) << row.word << row.n << " " << row.x;
}

}  // namespace
}  // namespace quorvex
