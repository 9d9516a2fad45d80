#include <gtest/gtest.h>

#include "linear/BlockDot.h"

namespace quorvex {
namespace {

TEST(BlockDot, SumsInItsDocumentedOrder) {
  for (std::size_t n : {0u, 1u, 7u, 8u, 13u, 256u}) {
    std::vector<double> a(n), b(n);
    double lanes[8] = {};
    for (std::size_t i = 0; i < n; ++i) {
      a[i] = 1.0 / static_cast<double>(i + 1);
      b[i] = 1e6 + static_cast<double>(i);
      lanes[i % 8] += a[i] * b[i];
    }
    EXPECT_EQ(BlockDot(a.data(), b.data(), n),
              ((lanes[0] + lanes[4]) + (lanes[2] + lanes[6])) + ((lanes[1] + lanes[5]) + (lanes[3] + lanes[7])));
  }
}

}  // namespace
}  // namespace quorvex
