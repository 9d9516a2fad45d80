#pragma once

namespace quorvex {

// The preferences that the program reads once at start and hands down. Plain data; only the store in app/ knows where
// they are kept. The initial values are those of a user who has set nothing.
struct Settings {
  double ResidualTolerance = 1e-10;  // key "tolerance", percent change of the merit function
  int MaxIterations = 250;           // key "maxiterations"
  int DivIterations = 10;            // key "diviterations", iterations allowed without improvement
  int DerivativeMethod = 0;          // key "derivative", 0 Richardson's extrapolation, 1 central difference
};

}  // namespace quorvex
