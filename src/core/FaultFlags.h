#pragma once

#include <cfenv>

namespace quorvex {

// The processor's sticky flags for invalid operation, division by zero and overflow stand for a test after each
// floating-point operation: clear them, compute, look once. Underflow and inexact results are no faults.
//
// The work between the two calls must not be inlined around them (read its inputs from memory and write its results
// there, or be a function of its own), since the compiler orders memory accesses against the calls, not arithmetic.
inline constexpr int kFaultFlags = FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW;

inline bool FaultFlagsRaised() { return std::fetestexcept(kFaultFlags) != 0; }

// Clearing is slow and looking is fast, so it looks first.
inline void ClearFaultFlags() {
  if (FaultFlagsRaised()) std::feclearexcept(kFaultFlags);
}

}  // namespace quorvex
