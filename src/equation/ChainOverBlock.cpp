#include "equation/ChainOverBlock.h"

#include <cstring>
#include <utility>

namespace quorvex {
namespace {

// A register of so many lanes.
template <std::size_t lanes>
struct Register {
  using Type [[gnu::vector_size(lanes * sizeof(double))]] = double;
};

// So many registers go through the steps together, for each operation takes several cycles until its result is there.
constexpr auto kTogether = std::make_index_sequence<8>();

// The points from `first` on, as far as tiles of whole registers go. What is left begins where this ends. Each register
// has a number known to the compiler, which thus keeps it one.
template <std::size_t lanes, std::size_t... k>
[[gnu::always_inline]] inline std::size_t RunTiles(const BlockOperand& start, std::span<const ChainStep> steps,
                                                   std::size_t n, double* out, std::index_sequence<k...>) {
  using V = typename Register<lanes>::Type;
  constexpr std::size_t kTile = lanes * sizeof...(k);
  std::size_t first = 0;
  for (; first + kTile <= n; first += kTile) {
    V v[sizeof...(k)] = {};
    const auto load = [&](V & to, const BlockOperand& from, std::size_t at) __attribute__((always_inline)) {
      if (from.Points != nullptr)
        std::memcpy(&to, from.Points + first + at * lanes, sizeof to);
      else
        to = from.Value - V{};  // in all lanes: x - 0 is x, of whatever sign
    };
    (load(v[k], start, k), ...);
    for (const ChainStep& step : steps) {
      const BlockOperand p = step.Operand;
      const auto each = [&](auto operation) __attribute__((always_inline)) {
        V loaded;
        if (p.Points != nullptr) {
          ((std::memcpy(&loaded, p.Points + first + k * lanes, sizeof loaded), operation(v[k], loaded)), ...);
        } else {
          loaded = p.Value - V{};
          (operation(v[k], loaded), ...);
        }
      };
      switch (step.Op) {
        case ChainOp::Add:
          each([](V & a, const V& b) __attribute__((always_inline)) { a = a + b; });
          break;
        case ChainOp::Subtract:
          each([](V & a, const V& b) __attribute__((always_inline)) { a = a - b; });
          break;
        case ChainOp::SubtractFrom:
          each([](V & a, const V& b) __attribute__((always_inline)) { a = b - a; });
          break;
        case ChainOp::Multiply:
          each([](V & a, const V& b) __attribute__((always_inline)) { a = a * b; });
          break;
        case ChainOp::Divide:
          each([](V & a, const V& b) __attribute__((always_inline)) { a = a / b; });
          break;
        case ChainOp::DivideInto:
          each([](V & a, const V& b) __attribute__((always_inline)) { a = b / a; });
          break;
        case ChainOp::Negate:
          ((v[k] = -v[k]), ...);
          break;
      }
    }
    (std::memcpy(out + first + k * lanes, &v[k], sizeof v[k]), ...);
  }
  return first;
}

[[gnu::noinline]] void RunRest(const BlockOperand& start, std::span<const ChainStep> steps, std::size_t first,
                               std::size_t n, double* out) {
  for (std::size_t i = first; i < n; ++i) {
    double v = start.At(i);
    for (const ChainStep& step : steps) v = ChainAt(step.Op, v, step.Operand.At(i));
    out[i] = v;
  }
}

#ifdef __x86_64__
// Wider registers change no bit: each operation is IEEE's, lane by lane, and none are fused.
[[gnu::target("avx512f")]] std::size_t RunAvx512(const BlockOperand& start, std::span<const ChainStep> steps,
                                                 std::size_t n, double* out) {
  return RunTiles<8>(start, steps, n, out, kTogether);
}
[[gnu::target("avx2")]] std::size_t RunAvx2(const BlockOperand& start, std::span<const ChainStep> steps, std::size_t n,
                                            double* out) {
  return RunTiles<4>(start, steps, n, out, kTogether);
}
#endif

std::size_t RunWide(const BlockOperand& start, std::span<const ChainStep> steps, std::size_t n, double* out) {
#ifdef __x86_64__
  if (__builtin_cpu_supports("avx512f")) return RunAvx512(start, steps, n, out);
  if (__builtin_cpu_supports("avx2")) return RunAvx2(start, steps, n, out);
#endif
  return RunTiles<2>(start, steps, n, out, kTogether);
}

}  // namespace

double ChainAt(ChainOp op, double value, double operand) {
  switch (op) {
    case ChainOp::Add:
      return value + operand;
    case ChainOp::Subtract:
      return value - operand;
    case ChainOp::SubtractFrom:
      return operand - value;
    case ChainOp::Multiply:
      return value * operand;
    case ChainOp::Divide:
      return value / operand;
    case ChainOp::DivideInto:
      return operand / value;
    case ChainOp::Negate:
      return -value;
  }
  return value;
}

void ChainOverBlock(const BlockOperand& start, std::span<const ChainStep> steps, std::size_t n, double* out) {
  RunRest(start, steps, RunWide(start, steps, n, out), n, out);
}

}  // namespace quorvex
