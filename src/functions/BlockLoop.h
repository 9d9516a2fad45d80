#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "core/Limits.h"
#include "core/VectorWidth.h"
#include "functions/DoubleDouble.h"
#include "functions/FusedMultiplyAdd.h"

// How a function of one or two numbers is run over arrays, with the bits of the one-number call.
//
// A kernel is a small value with three members of the same arguments:
//   bool Ordinary(x...)      whether At may be asked; a test of bits, for comparing a NaN would raise a flag
//   double At(fma, x...)     the value, without a branch and without a call, so that the loop below turns into vector
//                            instructions; it raises no flag but those of the result. In place of arguments that
//                            are not ordinary it is given ones. fma(a, b, c) is the fused operation
//   double Otherwise(x...)   the value for the other arguments, one by one
// The first two are always inlined, the third never is, lest its flags are raised in passing.
//
// A kernel may have a second one, Modest, for a narrower range in which the same bits take less work: it runs over the
// blocks that lie within that range as a whole.
//
// In place of Otherwise a kernel may have two further ones, whose values are the same: Other for one point, and Others
// for the arguments of an array that are not ordinary, put side by side.
//
// A kernel that looks something up in a table has Place(x...), where that stands, and At(fma, place, x...): the places
// are found in a loop of their own, since getting them from memory takes less than parting a vector of them.
//
// In place of At a kernel with a table may have two steps, Second(fma, First(fma, place, x...), x...), with a sum of
// two doubles between them: each step then has a loop of its own, since the processor looks ahead over more points
// where a point takes fewer instructions. Its narrower range is that where IsModest(first, x...), and its work there
// ModestSecond(fma, SecondPlace(first, x...), first, x...), with another table.
//
// At is a fixed sequence of IEEE operations, the fused one among them, so neither the width of the instructions nor the
// place in a block can change a bit.
namespace quorvex::blocks {

template <class Kernel, class... X>
concept HasTable = requires(Kernel kernel, X... x) {
  kernel.Place(x...);
};
template <class Kernel, class... X>
concept InTwoSteps = requires(Kernel kernel, DoubleDouble first, X... x) {
  kernel.SecondPlace(first, x...);
};

// The value at ordinary arguments.
template <class Fma, class Kernel, class... X>
[[gnu::always_inline]] inline double OrdinaryValue(Fma fma, Kernel kernel, X... x) {
  if constexpr (InTwoSteps<Kernel, X...>) {
    const DoubleDouble first = kernel.First(fma, kernel.Place(x...), x...);
    if (kernel.IsModest(first, x...)) [[likely]]
      return kernel.ModestSecond(fma, kernel.SecondPlace(first, x...), first, x...);
    return kernel.Second(fma, first, x...);
  } else if constexpr (HasTable<Kernel, X...>) {
    return kernel.At(fma, kernel.Place(x...), x...);
  } else {
    return kernel.At(fma, x...);
  }
}

// The value at any.
template <class Fma, class Kernel, class... X>
[[gnu::always_inline]] inline double ValueAt(Fma fma, Kernel kernel, X... x) {
  if constexpr (requires { typename Kernel::Modest; })
    if (Kernel::Modest::Ordinary(x...)) [[likely]]
      return OrdinaryValue(fma, typename Kernel::Modest(), x...);
  if (kernel.Ordinary(x...)) [[likely]]
    return OrdinaryValue(fma, kernel, x...);
  if constexpr (requires { typename Kernel::Other; })
    return ValueAt(fma, typename Kernel::Other(), x...);
  else
    return kernel.Otherwise(x...);
}

// The value at one point, of a kernel without members.
template <class Kernel, class... X>
[[gnu::always_inline]] inline double CallKernel(X... x) {
  return AtOnePoint(
      [](auto lanes, auto... at) __attribute__((always_inline)) { return ValueAt(Fused<lanes>(), Kernel(), at...); },
      x...);
}

// The values at at most kBlock ordinary arguments.
template <class Fma, class Kernel, class... X>
[[gnu::always_inline]] inline void FillAll(Fma fma, Kernel kernel, std::size_t n, double* __restrict values,
                                           const X*... x) {
  std::uint64_t place[kBlock];
  if constexpr (HasTable<Kernel, X...>)
    for (std::size_t i = 0; i < n; ++i) place[i] = kernel.Place(x[i]...);
  if constexpr (InTwoSteps<Kernel, X...>) {
    double hi[kBlock], lo[kBlock];
    std::uint64_t immodest = 0;
    for (std::size_t i = 0; i < n; ++i) {
      const DoubleDouble first = kernel.First(fma, place[i], x[i]...);
      hi[i] = first.Hi;
      lo[i] = first.Lo;
      place[i] = kernel.SecondPlace(first, x[i]...);
      immodest |= kernel.IsModest(first, x[i]...) ? 0U : 1U;
    }
    if (immodest == 0)
      for (std::size_t i = 0; i < n; ++i) values[i] = kernel.ModestSecond(fma, place[i], {hi[i], lo[i]}, x[i]...);
    else
      for (std::size_t i = 0; i < n; ++i) values[i] = kernel.Second(fma, {hi[i], lo[i]}, x[i]...);
  } else if constexpr (HasTable<Kernel, X...>) {
    for (std::size_t i = 0; i < n; ++i) values[i] = kernel.At(fma, place[i], x[i]...);
  } else {
    for (std::size_t i = 0; i < n; ++i) values[i] = kernel.At(fma, x[i]...);
  }
}

// Fills in the ordinary values among at most kBlock, and tells whether there are others. `values` overlies no x.
template <class Fma, class Kernel, class... X>
[[gnu::always_inline]] inline bool FillOrdinary(Fma fma, Kernel kernel, std::size_t n, double* __restrict values,
                                                const X*... x) {
  if constexpr (requires { typename Kernel::Modest; }) {
    std::uint64_t immodest = 0;
    for (std::size_t i = 0; i < n; ++i) immodest |= Kernel::Modest::Ordinary(x[i]...) ? 0U : 1U;
    if (immodest == 0) {
      FillAll(fma, typename Kernel::Modest(), n, values, x...);
      return false;
    }
  }
  std::uint64_t odd = 0;
  for (std::size_t i = 0; i < n; ++i) odd |= kernel.Ordinary(x[i]...) ? 0U : 1U;
  if (odd == 0) {
    FillAll(fma, kernel, n, values, x...);
    return false;
  }
  double tame[sizeof...(x)][kBlock];
  for (std::size_t i = 0; i < n; ++i) {
    const bool ordinary = kernel.Ordinary(x[i]...);
    std::size_t column = 0;
    ((tame[column++][i] = ordinary ? x[i] : 1.0), ...);
  }
  if constexpr (sizeof...(x) == 1)
    FillAll(fma, kernel, n, values, tame[0]);
  else
    FillAll(fma, kernel, n, values, tame[0], tame[1]);
  return true;
}

// The same in vectors of full width.
template <class Kernel, class... X>
bool FillOrdinaryWide(const Kernel& kernel, std::size_t n, double* values, const X*... x) {
  const auto fill =
      [](auto lanes, const Kernel* of, std::size_t count, double* to, auto... from) __attribute__((always_inline)) {
    return FillOrdinary(Fused<lanes>(), *of, count, to, from...);
  };
  return AtFullWidth(fill, &kernel, n, values, x...);
}

template <class Kernel, class... X>
void Run(Kernel kernel, std::size_t n, double* y, const X*... x);

// Fills in the others.
template <class Kernel, class... X>
void FillOthers(Kernel kernel, std::size_t n, double* values, const X*... x) {
  if constexpr (requires { typename Kernel::Others; }) {
    double others[sizeof...(x)][kBlock];
    std::uint16_t place[kBlock];
    std::size_t count = 0;
    for (std::size_t i = 0; i < n; ++i) {  // each is noted, lest the processor guess which
      place[count] = static_cast<std::uint16_t>(i);
      std::size_t column = 0;
      ((others[column++][count] = x[i]), ...);
      count += kernel.Ordinary(x[i]...) ? 0U : 1U;
    }
    if constexpr (sizeof...(x) == 1)
      Run(typename Kernel::Others(), count, others[0], others[0]);
    else
      Run(typename Kernel::Others(), count, others[0], others[0], others[1]);
    for (std::size_t k = 0; k < count; ++k) values[place[k]] = others[0][k];
  } else {
    for (std::size_t i = 0; i < n; ++i)
      if (!kernel.Ordinary(x[i]...)) values[i] = kernel.Otherwise(x[i]...);
  }
}

// y[i] = kernel(x[i]...) for n values. y may be one of the x, but may not overlap one in part.
template <class Kernel, class... X>
void Run(Kernel kernel, std::size_t n, double* y, const X*... x) {
  while (n > 0) {
    double values[kBlock];
    const std::size_t count = std::min(kBlock, n);
    double* const to = ((y == x) || ...) ? values : y;
    if (FillOrdinaryWide(kernel, count, to, x...)) FillOthers(kernel, count, to, x...);
    if (to == values) std::copy_n(values, count, y);
    n -= count;
    y += count;
    ((x += count), ...);
  }
}

}  // namespace quorvex::blocks
