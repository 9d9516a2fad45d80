#pragma once

#include "core/LossKind.h"

namespace quorvex {

// What a residual counts under a loss, u being the weighted residual in units of the scale of the good ones and k the
// loss's tuning constant. With psi the derivative of the loss,
//
//   Huber      psi(u)/u = min(1, k/|u|)            k = 1.345     P. J. Huber, Ann. Math. Statist. 35, 1964
//   SoftL1     psi(u)/u = 1/sqrt(1 + (u/k)^2)      k = 1.2871    P. Charbonnier et al., IEEE Trans. Image Proc. 6, 1997
//   Cauchy     psi(u)/u = 1/(1 + (u/k)^2)          k = 2.385     P. W. Holland & R. E. Welsch, Comm. Statist. A6, 1977
//   Bisquare   psi(u)/u = (1 - (u/k)^2)^2, |u| < k k = 4.685     A. E. Beaton & J. W. Tukey, Technometrics 16, 1974
//
// and 1 for squares. Each constant makes the estimate as good as one by least squares from 95 % of the points where the
// errors are normal: (E psi')^2 / E psi^2 = 0.95 under the standard normal law.
double LossConstant(LossKind loss);
// psi(u)/u, between 0 and 1: what is left of a point's weight. 1 at u = 0 and 0 for an infinite u, but by squares.
double LossWeight(LossKind loss, double u);
// psi'(u).
double LossSlope(LossKind loss, double u);

// Whether psi comes back towards 0: a residual that is far out then pulls less than one that is nearer, and there may
// be several minima.
bool Redescends(LossKind loss);

// The points whose weight a loss leaves less than that are outliers.
inline constexpr double kOutlierWeight = 0.5;

}  // namespace quorvex
