#include <gtest/gtest.h>

#include "core/VectorWidths.h"
#include "linear/BlockDot.h"

namespace quorvex {
namespace {

// The sum in the documented order, one point after the other.
double DotByPoints(const double* a, const double* b, std::size_t n) {
  double lanes[8] = {};
  for (std::size_t i = 0; i < n; ++i) lanes[i % 8] += a[i] * b[i];
  return ((lanes[0] + lanes[4]) + (lanes[2] + lanes[6])) + ((lanes[1] + lanes[5]) + (lanes[3] + lanes[7]));
}

// One pair of columns and triangles, at any place in memory; sums of mixed signs, so that another order would show.
TEST(BlockDot, SumsInItsDocumentedOrder) {
  constexpr std::size_t kMost = 20;
  std::vector<std::vector<double>> columns(kMost + 1, std::vector<double>(260));
  for (std::size_t k = 0; k <= kMost; ++k)
    for (std::size_t i = 0; i < columns[k].size(); ++i)
      columns[k][i] = ((i + k) % 3 == 0 ? -1e6 : 1.0) / static_cast<double>(i * (k + 1) + 1);
  WithEveryVectorWidth([&] {
    for (std::size_t n = 0; n <= 257; n = n < 40 ? n + 1 : n + 31) {
      const double *a[kMost], *b[kMost];
      for (std::size_t k = 0; k < kMost; ++k) {
        a[k] = columns[kMost - k].data() + n % 4;
        b[k] = columns[k].data() + k % 3;
      }
      for (std::size_t count = 0; count <= kMost; ++count) {
        std::vector<double> out(count * (count + 1) / 2 + 1, 77);
        TriangleOfDots(a, b, count, n, out.data());
        for (std::size_t j = 0, at = 0; j < count; ++j)
          for (std::size_t k = 0; k <= j; ++k) EXPECT_EQ(out[at++], DotByPoints(a[j], b[k], n)) << n << ' ' << j << k;
        EXPECT_EQ(out.back(), 77);
      }
      EXPECT_EQ(BlockDot(a[0], b[1], n), DotByPoints(a[0], b[1], n)) << n;
    }
  });
}

}  // namespace
}  // namespace quorvex
