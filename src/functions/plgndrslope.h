#pragma once

namespace quorvex {

// The derivative of plgndr(l, m, x) by x, to some l roundings of the largest value nearby. With s = sqrt(1-x^2) and
// D(m) the m-th derivative of Legendre's polynomial it is (-1)^m (s^m D(m+1) - m x s^(m-2) D(m)), which has values at
// both ends but for m = 1; there the processor's flags show a fault. Throws NumericFault where plgndr does.
double plgndrslope(int l, int m, double x);

}  // namespace quorvex
