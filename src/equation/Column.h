#pragma once

#include <algorithm>
#include <cstddef>
#include <type_traits>

#include "equation/BlockOperations.h"
#include "equation/Operators.h"
#include "functions/Elementary.h"

namespace quorvex {

// A value at each of up to kLongest points, so that a formula written once, as if for one point, runs over many: each
// operation is a loop over them all. A point's result is, to the bit, what the formula gives with numbers.
struct Column {
  static constexpr std::size_t kLongest = 128;  // a formula's intermediate results stay in the nearest cache

  Column() = default;
  explicit Column(std::size_t n) : N(n) {}
  Column(const Column& other) { Take(other.Points, other.N); }
  Column& operator=(const Column&) = delete;

  void Take(const double* from, std::size_t n) {
    N = n;
    std::copy_n(from, n, Points);
  }

  std::size_t N = 0;
  double Points[kLongest];
};

namespace columns {

inline BlockOperand Operand(const Column& a) { return {a.Points, 0}; }
inline BlockOperand Operand(double a) { return {nullptr, a}; }
inline std::size_t Length(const Column& a, const Column&) { return a.N; }
inline std::size_t Length(const Column& a, double) { return a.N; }
inline std::size_t Length(double, const Column& b) { return b.N; }

// A column and a column or number, in either order.
template <class A, class B>
concept Pair = requires(const A& a, const B& b) {
  Length(a, b);
}
&&!(std::is_arithmetic_v<A> && std::is_arithmetic_v<B>);

template <class A, class B>
Column Apply(int code, const A& a, const B& b) {
  Column result(Length(a, b));
  BinaryOverBlock(code, Operand(a), Operand(b), result.N, result.Points);
  return result;
}

template <void (*overBlock)(const double*, double*, std::size_t)>
Column Apply(const Column& x) {
  Column result(x.N);
  overBlock(x.Points, result.Points, x.N);
  return result;
}

}  // namespace columns

template <class A, class B>
requires columns::Pair<A, B> Column operator+(const A& a, const B& b) { return columns::Apply(kAdd, a, b); }
template <class A, class B>
requires columns::Pair<A, B> Column operator-(const A& a, const B& b) { return columns::Apply(kSubtract, a, b); }
template <class A, class B>
requires columns::Pair<A, B> Column operator*(const A& a, const B& b) { return columns::Apply(kMultiply, a, b); }
template <class A, class B>
requires columns::Pair<A, B> Column operator/(const A& a, const B& b) { return columns::Apply(kDivide, a, b); }
template <class A, class B>
requires columns::Pair<A, B> Column Power(const A& a, const B& b) { return columns::Apply(kPower, a, b); }

inline Column operator-(const Column& a) {
  Column result(a.N);
  UnaryOverBlock(kNegate, columns::Operand(a), a.N, result.Points);
  return result;
}

inline Column Exp(const Column& x) { return columns::Apply<ExpBlock>(x); }
inline Column Ln(const Column& x) { return columns::Apply<LnBlock>(x); }
inline Column Sin(const Column& x) { return columns::Apply<SinBlock>(x); }
inline Column Cos(const Column& x) { return columns::Apply<CosBlock>(x); }
inline Column Sqr(const Column& x) {
  Column result(x.N);
  for (std::size_t i = 0; i < x.N; ++i) result.Points[i] = Sqr(x.Points[i]);
  return result;
}

}  // namespace quorvex
