#pragma once

namespace quorvex {

// How a model of the user's own is differentiated by its coefficients where he typed no derivatives. The numbers are
// those that settings are stored with.
enum class DerivativeKind {
  Richardson = 0,  // extrapolated from central differences
  Central = 1,     // one central difference
  Exact = 2,       // by the rules of calculus over the compiled model (equation/ReverseSweep.h), else as Richardson
};

}  // namespace quorvex
