#include "equation/ChainOverBlock.h"

#include <cstring>
#include <utility>

#include "core/VectorRegister.h"
#include "core/VectorWidth.h"

namespace quorvex {
namespace {

// So many registers go through the steps together, for each operation takes several cycles until its result is there.
constexpr auto kTogether = std::make_index_sequence<8>();

// The points from `first` on, as far as tiles of whole registers go. What is left begins where this ends. Each register
// has a number known to the compiler, which thus keeps it one.
template <std::size_t lanes, std::size_t... k>
[[gnu::always_inline]] inline std::size_t RunTiles(const BlockOperand& start, std::span<const ChainStep> steps,
                                                   std::size_t first, std::size_t n, double* out,
                                                   std::index_sequence<k...>) {
  using V = typename VectorRegister<lanes>::Type;
  constexpr std::size_t kTile = lanes * sizeof...(k);
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

// One step at one point.
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

[[gnu::noinline]] void RunRest(const BlockOperand& start, std::span<const ChainStep> steps, std::size_t first,
                               std::size_t n, double* out) {
  for (std::size_t i = first; i < n; ++i) {
    double v = start.At(i);
    for (const ChainStep& step : steps) v = ChainAt(step.Op, v, step.Operand.At(i));
    out[i] = v;
  }
}

}  // namespace

void ChainOverBlock(const BlockOperand& start, std::span<const ChainStep> steps, std::size_t n, double* out) {
  const std::size_t rest = AtFullWidth(
      [](auto lanes, const BlockOperand* from, const ChainStep* step, std::size_t count, std::size_t points, double* to)
          __attribute__((always_inline)) {
            const std::span<const ChainStep> all(step, count);
            const std::size_t begin = RunTiles<lanes()>(*from, all, 0, points, to, kTogether);
            return RunTiles<lanes()>(*from, all, begin, points, to, std::index_sequence<0>());
          },
      &start, steps.data(), steps.size(), n, out);
  RunRest(start, steps, rest, n, out);
}

}  // namespace quorvex
