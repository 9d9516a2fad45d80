#pragma once

namespace quorvex {

class ModelClass;

// The number of coefficients that the fit of a solved model adjusted.
int FittedCount(const ModelClass& model);
// The number of points that it was fitted to.
double PointCount(const ModelClass& model);

// What a solved model explains against what its coefficients cost, the less the better; they compare models of the same
// data, weights and kind of fit. With n points, k fitted coefficients and K = k + 1, the variance of the errors being
// estimated, too:
//
//   AICc = n ln(RssNorm / n) + 2 K + 2 K (K + 1) / (n - K - 1)
//   BIC  = n ln(RssNorm / n) + K ln n
//
// Where the standard deviations are taken at their word, the chi-square RssNorm / GivenDeviation^2 stands in the place
// of n ln(RssNorm / n), and K = k. Constants that all models share are left out. An exact fit, whose residuals are no
// more than the rounding of Y, has minus infinity. NaN, that is not available, where AICc has no n - K - 1 above 0. (H.
// Akaike, IEEE Trans. Autom. Control 19, 1974; C. M. Hurvich & C.-L. Tsai, Biometrika 76, 1989; G. Schwarz, Ann.
// Statist. 6, 1978; K. P. Burnham & D. R. Anderson, Model Selection and Multimodel Inference, 2nd ed. 2002.)
double AICc(const ModelClass& model);
double BIC(const ModelClass& model);

}  // namespace quorvex
