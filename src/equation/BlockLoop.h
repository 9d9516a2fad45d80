#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

// How a function of one or two numbers is run over arrays, with the bits of the one-number call.
//
// A kernel is a small value with three members of the same arguments, all but the last always inlined:
//   bool Ordinary(x...)      whether At may be asked; a test of bits, for comparing a NaN would raise a flag
//   double At(x...)          the value, without a branch and without a call, so that the loop below turns into vector
//                            instructions; it raises no flag but those of the result. In place of arguments that
//                            are not ordinary it is given ones
//   double Otherwise(x...)   the value for the other arguments, one by one
//
// At is a fixed sequence of IEEE operations and fused operations are never made, so neither the width of the
// instructions nor the place in a block can change a bit.
namespace quorvex::blocks {

constexpr std::size_t kBlock = 256;

template <class Kernel, class... X>
[[gnu::always_inline]] inline double CallKernel(Kernel kernel, X... x) {
  return kernel.Ordinary(x...) ? kernel.At(x...) : kernel.Otherwise(x...);
}

// At most kBlock values. They go through a local array: then nothing can overlie it and the loops need no care.
template <class Kernel, class... X>
[[gnu::always_inline]] inline void RunOne(Kernel kernel, std::size_t n, double* y, const X*... x) {
  double values[kBlock];
  std::uint64_t odd = 0;
  for (std::size_t i = 0; i < n; ++i) odd |= kernel.Ordinary(x[i]...) ? 0U : 1U;
  if (odd == 0) {
    for (std::size_t i = 0; i < n; ++i) values[i] = kernel.At(x[i]...);
  } else {
    const auto run = [&](auto&... tame) __attribute__((always_inline)) {
      for (std::size_t i = 0; i < n; ++i) {
        const bool ordinary = kernel.Ordinary(x[i]...);
        ((tame[i] = ordinary ? x[i] : 1.0), ...);
      }
      for (std::size_t i = 0; i < n; ++i) values[i] = kernel.At(tame[i]...);
    };
    if constexpr (sizeof...(x) == 1) {
      double first[kBlock];
      run(first);
    } else {
      double first[kBlock], second[kBlock];
      run(first, second);
    }
    for (std::size_t i = 0; i < n; ++i)
      if (!kernel.Ordinary(x[i]...)) values[i] = kernel.Otherwise(x[i]...);
  }
  std::copy_n(values, n, y);
}

template <class Kernel, class... X>
[[gnu::always_inline]] inline void RunAll(Kernel kernel, std::size_t n, double* y, const X*... x) {
  for (std::size_t first = 0; first < n; first += kBlock)
    RunOne(kernel, std::min(kBlock, n - first), y + first, x + first...);
}

#ifdef __x86_64__
template <class Kernel, class... X>
[[gnu::target("avx2")]] void RunWide(Kernel kernel, std::size_t n, double* y, const X*... x) {
  RunAll(kernel, n, y, x...);
}
#endif

// y[i] = kernel(x[i]...) for n values. y may be one of the x, but may not overlap one in part.
template <class Kernel, class... X>
void Run(Kernel kernel, std::size_t n, double* y, const X*... x) {
#ifdef __x86_64__
  if (__builtin_cpu_supports("avx2")) return RunWide(kernel, n, y, x...);
#endif
  RunAll(kernel, n, y, x...);
}

}  // namespace quorvex::blocks
