#pragma once

#ifdef __x86_64__
#include <immintrin.h>
#endif

#include <cfenv>

namespace quorvex {

// The processor's sticky flags for invalid operation, division by zero and overflow stand for a test after each
// floating-point operation: clear them, compute, look once. Underflow and inexact results are no faults.
//
// The work between the two calls must not be inlined around them (read its inputs from memory and write its results
// there, or be a function of its own), since the compiler orders memory accesses against the calls, not arithmetic.
inline constexpr int kFaultFlags = FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW;

// Which of these flags are raised. All arithmetic on doubles is that of the vector unit, whose register alone is
// read and written here: the library looks at the old unit, too, which takes several times as long.
inline int RaisedFlags(int flags) {
#ifdef __x86_64__
  asm volatile("" ::: "memory");  // as a call would, this keeps accesses to memory on their side
  return static_cast<int>(_mm_getcsr()) & flags;
#else
  return std::fetestexcept(flags);
#endif
}

// Clearing is slow and looking is fast, so it looks first.
inline void ClearFlags(int flags) {
  if (RaisedFlags(flags) == 0) return;
#ifdef __x86_64__
  _mm_setcsr(_mm_getcsr() & ~static_cast<unsigned>(flags));
  asm volatile("" ::: "memory");
#else
  std::feclearexcept(flags);
#endif
}

inline bool FaultFlagsRaised() { return RaisedFlags(kFaultFlags) != 0; }
inline void ClearFaultFlags() { ClearFlags(kFaultFlags); }

}  // namespace quorvex
