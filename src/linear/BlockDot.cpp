#include "linear/BlockDot.h"

#include <cstring>
#include <utility>

#include "core/VectorWidth.h"

namespace quorvex {
namespace {

constexpr std::size_t kSums = 8;

// `count` dots of `a`, all of their sums in registers of `lanes` doubles.
template <std::size_t lanes, std::size_t count>
[[gnu::always_inline]] inline void Dots(const double* a, const double* const* b, std::size_t n, double* out) {
  using Register [[gnu::vector_size(lanes * sizeof(double))]] = double;
  constexpr std::size_t kRegisters = kSums / lanes;
  Register sums[count][kRegisters] = {};
  const double* column[count];
  for (std::size_t k = 0; k < count; ++k) column[k] = b[k];
  std::size_t i = 0;
  for (; i + kSums <= n; i += kSums)
    for (std::size_t r = 0; r < kRegisters; ++r) {
      Register x, y;
      std::memcpy(&x, a + i + r * lanes, sizeof(x));
      for (std::size_t k = 0; k < count; ++k) {
        std::memcpy(&y, column[k] + i + r * lanes, sizeof(y));
        sums[k][r] += x * y;
      }
    }
  for (std::size_t k = 0; k < count; ++k) {
    double sum[kSums];
    std::memcpy(sum, sums[k], sizeof(sum));
    // i is a multiple of 8 here, so each point of the rest falls to the sum that the loop above would have given it to.
    for (std::size_t lane = 0; lane < kSums - 1; ++lane)
      if (i + lane < n) sum[lane] += a[i + lane] * column[k][i + lane];
    // Folded in halves, as registers are: 4 to 7 onto 0 to 3, then 2 and 3 onto 0 and 1.
    out[k] = ((sum[0] + sum[4]) + (sum[2] + sum[6])) + ((sum[1] + sum[5]) + (sum[3] + sum[7]));
  }
}

}  // namespace

double BlockDot(const double* a, const double* b, std::size_t n) {
  const auto dot = [](auto lanes, const double* x, const double* y, std::size_t points) __attribute__((always_inline)) {
    double out;
    Dots<lanes, 1>(x, &y, points, &out);
    return out;
  };
  return AtFullWidth(dot, a, b, n);
}

void BlockDots(const double* a, const double* const* b, std::size_t count, std::size_t n, double* out) {
  const auto dots = [](auto lanes, const double* x, const double* const* y, std::size_t columns, std::size_t points,
                       double* sums) __attribute__((always_inline)) {
    // As many as leave room for the factors in 16 registers, or in 32 wide ones.
    constexpr std::size_t kTogether = lanes == 2 ? 3 : lanes == 4 ? 6 : 8;
    for (; columns >= kTogether; columns -= kTogether, y += kTogether, sums += kTogether)
      Dots<lanes, kTogether>(x, y, points, sums);
    const auto rest = [&]<std::size_t... k>(std::index_sequence<k...>) __attribute__((always_inline)) {
      ((columns == k + 1 ? Dots<lanes, k + 1>(x, y, points, sums) : void()), ...);
    };
    rest(std::make_index_sequence<kTogether - 1>());
  };
  AtFullWidth(dots, a, b, count, n, out);
}

}  // namespace quorvex
