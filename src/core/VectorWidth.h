#pragma once

#include <cstddef>
#include <type_traits>

// How wide the vector instructions of the innermost loops are: as wide as the processor has them. Such a loop is
// compiled once for each width, and the processor chooses when the program runs. It changes no bit, since every result
// is one sequence of IEEE operations whatever stands beside it in a register. Fused multiply-adds, which round once
// instead of twice, come with the wider vectors, but the compiler makes none by itself (-ffp-contract=off): the last
// digit would depend on the processor. A loop that asks for one gives the same bits where there is no such instruction
// (functions/FusedMultiplyAdd.h).
namespace quorvex {

// Doubles in a register. Four and Eight are for processors that have the fused operation, too.
enum class VectorWidth : unsigned char { Two, Four, Eight };

VectorWidth WidestVectors();

namespace vectors {
extern VectorWidth inUse;
}

inline VectorWidth VectorsInUse() { return vectors::inUse; }

// For tests, which compare the widths with each other: no wider than WidestVectors(), and while nothing else runs.
inline void UseVectors(VectorWidth width) { vectors::inUse = width; }

template <std::size_t n>
using Lanes = std::integral_constant<std::size_t, n>;

namespace vectors {
#ifdef __x86_64__
template <class Loop, class... With>
[[gnu::target("avx2,fma"), gnu::noinline]] auto RunFour(With... with) {
  return Loop()(Lanes<4>(), with...);
}

template <class Loop, class... With>
[[gnu::target("avx2,fma,avx512f,avx512dq,avx512vl"), gnu::noinline]] auto RunEight(With... with) {
  return Loop()(Lanes<8>(), with...);
}
#endif
}  // namespace vectors

// Runs loop(Lanes<n>(), with...). The loop is a lambda that is always inlined, as is all that it calls: what stands
// outside the variants is compiled for any processor. It captures nothing, so that `with` travels in registers.
template <class Loop, class... With>
[[gnu::always_inline]] inline auto AtFullWidth(Loop loop, With... with) {
#ifdef __x86_64__
  if (VectorsInUse() == VectorWidth::Eight) return vectors::RunEight<Loop>(with...);
  if (VectorsInUse() == VectorWidth::Four) return vectors::RunFour<Loop>(with...);
#endif
  return loop(Lanes<2>(), with...);
}

// Runs loop(Lanes<n>(), with...) for a single point: two variants, with the fused operation and without.
template <class Loop, class... With>
[[gnu::always_inline]] inline auto AtOnePoint(Loop loop, With... with) {
#ifdef __x86_64__
  if (VectorsInUse() != VectorWidth::Two) [[likely]]
    return vectors::RunFour<Loop>(with...);
#endif
  return loop(Lanes<2>(), with...);
}

}  // namespace quorvex
