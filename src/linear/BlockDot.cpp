#include "linear/BlockDot.h"

namespace quorvex {
namespace {

[[gnu::always_inline]] inline double Dot(const double* a, const double* b, std::size_t n) {
  // Eight sums that do not wait for each other. They are two wide registers or four narrow ones, so both ways of
  // computing add in one order.
  double sums[8] = {};
  std::size_t i = 0;
  for (; i + 8 <= n; i += 8)
    for (std::size_t lane = 0; lane < 8; ++lane) sums[lane] += a[i + lane] * b[i + lane];
  // i is a multiple of 8 here, so each point of the rest falls to the sum that the loop above would have given it to.
  for (std::size_t lane = 0; i < n; ++i, ++lane) sums[lane] += a[i] * b[i];
  // Folded in halves, as registers are: 4 to 7 onto 0 to 3, then 2 and 3 onto 0 and 1.
  return ((sums[0] + sums[4]) + (sums[2] + sums[6])) + ((sums[1] + sums[5]) + (sums[3] + sums[7]));
}

#ifdef __x86_64__
// Without "fma": a fused multiply-add rounds once instead of twice, and the last digit would depend on the processor.
[[gnu::target("avx2")]] double DotWide(const double* a, const double* b, std::size_t n) { return Dot(a, b, n); }
#endif

}  // namespace

double BlockDot(const double* a, const double* b, std::size_t n) {
#ifdef __x86_64__
  if (__builtin_cpu_supports("avx2")) return DotWide(a, b, n);
#endif
  return Dot(a, b, n);
}

}  // namespace quorvex
