#include "linear/BlockDot.h"

#include <cstring>
#include <utility>

#include "core/VectorRegister.h"
#include "core/VectorWidth.h"

namespace quorvex {
namespace {

constexpr std::size_t kSums = 8;

// Adds the points from `first` on, fewer than 8. That is a multiple of 8, so each falls to the sum that a whole
// register would have given it to.
[[gnu::noinline]] void AddRest(const double* a, const double* b, std::size_t first, std::size_t n, double* sums) {
  for (std::size_t i = first; i < n; ++i) sums[i - first] += a[i] * b[i];
}

// Folded in halves: 4 to 7 onto 0 to 3, then 2 and 3 onto 0 and 1.
template <class V>
[[gnu::always_inline]] inline double Total(const V (&sums)[1]) {
  if constexpr (sizeof(V) == 2 * sizeof(double)) {
    return sums[0][0] + sums[0][1];
  } else {
    using Half = typename VectorRegister<sizeof(V) / sizeof(double) / 2>::Type;
    Half halves[2];
    std::memcpy(halves, sums, sizeof(V));
    const Half folded[1] = {halves[0] + halves[1]};
    return Total(folded);
  }
}
template <class V>
[[gnu::always_inline]] inline double Total(const V (&sums)[2]) {
  const V folded[1] = {sums[0] + sums[1]};
  return Total(folded);
}
template <class V>
[[gnu::always_inline]] inline double Total(const V (&sums)[4]) {
  const V folded[2] = {sums[0] + sums[2], sums[1] + sums[3]};
  return Total(folded);
}

// The dots of so many columns a with `count` columns b, handed to `take` with their numbers. All of their sums are in
// registers, each of which has a number m known to the compiler.
template <std::size_t lanes, std::size_t count, class Take, std::size_t... m>
[[gnu::always_inline]] inline void Dots(const double* const* a, const double* const* b, std::size_t n, Take take,
                                        std::index_sequence<m...>) {
  using V = typename VectorRegister<lanes>::Type;
  constexpr std::size_t kRegisters = kSums / lanes;
  V sums[sizeof...(m)][kRegisters];
  const double* const x[] = {a[m / count]...};
  const double* const y[] = {b[m % count]...};
  const auto add = [](V & sum, const double* p, const double* q) __attribute__((always_inline)) {
    V u, v;
    std::memcpy(&u, p, sizeof(u));
    std::memcpy(&v, q, sizeof(v));
    sum += u * v;
  };
  for (std::size_t r = 0; r < kRegisters; ++r) ((sums[m][r] = V{}), ...);
  std::size_t i = 0;
  for (; i + kSums <= n; i += kSums)
    for (std::size_t r = 0; r < kRegisters; ++r) (add(sums[m][r], x[m] + i + r * lanes, y[m] + i + r * lanes), ...);
  const auto addRest = [ i, n ](V(&to)[kRegisters], const double* p, const double* q) __attribute__((always_inline)) {
    double rest[kSums];
    std::memcpy(rest, to, sizeof(rest));
    AddRest(p, q, i, n, rest);
    std::memcpy(to, rest, sizeof(rest));
  };
  if (i < n) (addRest(sums[m], x[m], y[m]), ...);
  (take(m / count, m % count, Total(sums[m])), ...);
}

// Rows `first` to `first` + rows - 1 of the triangle, `most` of their columns at a time. The last row is the longest,
// and what the others have beyond their ends is left out.
template <std::size_t lanes, std::size_t rows, std::size_t most>
[[gnu::always_inline]] inline void TriangleRows(const double* const* a, const double* const* b, std::size_t first,
                                                std::size_t n, double* out) {
  const auto take = [&]<std::size_t count>(std::size_t from) __attribute__((always_inline)) {
    const auto put = [&](std::size_t j, std::size_t k, double dot) __attribute__((always_inline)) {
      const std::size_t row = first + j, column = from + k;
      if (column <= row) out[row * (row + 1) / 2 + column] = dot;
    };
    Dots<lanes, count>(a + first, b + from, n, put, std::make_index_sequence<rows * count>());
  };
  const std::size_t columns = first + rows;
  std::size_t from = 0;
  for (; columns - from >= most; from += most) take.template operator()<most>(from);
  const auto rest = [&]<std::size_t... k>(std::index_sequence<k...>) __attribute__((always_inline)) {
    ((columns - from == k + 1 ? take.template operator()<k + 1>(from) : void()), ...);
  };
  rest(std::make_index_sequence<most - 1>());
}

}  // namespace

double BlockDot(const double* a, const double* b, std::size_t n) {
  const auto dot = [](auto lanes, const double* x, const double* y, std::size_t points) __attribute__((always_inline)) {
    double out = 0;
    const auto put = [&](std::size_t, std::size_t, double of) __attribute__((always_inline)) { out = of; };
    Dots<lanes, 1>(&x, &y, points, put, std::make_index_sequence<1>());
    return out;
  };
  return AtFullWidth(dot, a, b, n);
}

void TriangleOfDots(const double* const* a, const double* const* b, std::size_t count, std::size_t n, double* out) {
  const auto dots = [](auto lanes, const double* const* x, const double* const* y, std::size_t rows, std::size_t points,
                       double* sums) __attribute__((always_inline)) {
    // As many as leave room for the factors in 16 registers, or in 32 wide ones.
    constexpr std::size_t kRows = lanes == 2 ? 1 : 2, kColumns = lanes == 8 ? 8 : 3;
    std::size_t first = 0;
    for (; first + kRows <= rows; first += kRows) TriangleRows<lanes(), kRows, kColumns>(x, y, first, points, sums);
    if (first < rows) TriangleRows<lanes(), 1, kColumns>(x, y, first, points, sums);
  };
  AtFullWidth(dots, a, b, count, n, out);
}

}  // namespace quorvex
