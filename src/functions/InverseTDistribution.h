#pragma once

#include <array>

namespace quorvex {

// The t that Student's distribution with `df` degrees of freedom stays below with probability p, for the confidence
// limits of coefficients. By bisection between 0.25 and 320, so a t outside that range comes out as its end; rounded to
// four decimals. The bisection stops when the probability agrees to 1e-7: where the density is low (one
// degree of freedom, p near 1) the last decimals are not certain.
// For p within 1e-7 of 0 the result is 0. Throws NumericFault where betai does.
double InverseTDistribution(double p, double df);

// The quantiles of the confidence limits that every report shows: 68, 90, 95 and 99 percent, two-sided. The first is
// taken at 0.84 as it always was. With an infinite df those of the normal distribution, unrounded.
std::array<double, 4> ConfidenceQuantiles(double df);

}  // namespace quorvex
