#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace quorvex {

// Numbers that look random and are the same on every machine: the standard library says what its generators give, but
// not what its distributions make of it. Method: splitmix64 (G. L. Steele, D. Lea & C. H. Flood, OOPSLA 2014).
class SeededRandom {
 public:
  explicit SeededRandom(std::uint64_t seed) : state_(seed) {}

  std::uint64_t Next() {
    std::uint64_t z = state_ += 0x9e3779b97f4a7c15u;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
    return z ^ (z >> 31);
  }
  // From 0 to below 1.
  double Uniform() { return static_cast<double>(Next() >> 11) * 0x1p-53; }
  double Between(double low, double high) { return low + (high - low) * Uniform(); }
  std::size_t Below(std::size_t n) { return static_cast<std::size_t>(Next() % n); }

  template <typename T>
  void Shuffle(std::vector<T>& items) {
    for (std::size_t i = items.size(); i > 1; --i) std::swap(items[i - 1], items[Below(i)]);
  }

 private:
  std::uint64_t state_;
};

}  // namespace quorvex
