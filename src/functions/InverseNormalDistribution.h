#pragma once

namespace quorvex {

// The z that a standard normal variable stays below with probability p: the inverse of Phi(z) = erfc(-z/sqrt 2)/2.
// Domain 0 < p < 1, else throws NumericFault. Good to some 1e-15 relative (absolute near p = 0.5), into tails of
// 1e-300. Method: Halley steps on the smaller tail, from the rational approximation 26.2.23 of Abramowitz & Stegun,
// which is good to 4.5e-4; each step raises the error to about its third power.
double InverseNormalDistribution(double p);

}  // namespace quorvex
