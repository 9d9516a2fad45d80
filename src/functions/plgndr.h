#pragma once

namespace quorvex {

// Associated Legendre polynomial P(l, m, x), with the sign (-1)^m of the physicists' convention:
//   (-1)^m (1-x^2)^(m/2) d^m/dx^m P(l, x)
// for 0 <= m <= l and |x| <= 1; throws NumericFault otherwise. Starts from the closed form of P(m, m, x) and climbs in
// l by (l-m) P(l,m) = x (2l-1) P(l-1,m) - (l+m-1) P(l-2,m), which is stable (Abramowitz & Stegun 8.5.3). Accurate to
// some l roundings of the largest value nearby; large m overflow.
double plgndr(int l, int m, double x);

}  // namespace quorvex
