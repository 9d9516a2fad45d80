#pragma once

#include <cstddef>

#include "equation/BlockOperations.h"

namespace quorvex {

// The derivatives of the language's functions, for derivatives of whole models by the chain rule.

// Whether the derivative of the function by argument `which` (from 0) is known: it isn't for real orders of Bessel
// functions. Those that are known have a relative error below 1e-12, but near their zeros, and a few units in the last
// place for elementary functions.
bool HasPartial(int code, std::size_t which);

// That derivative at n <= kBlock points, where `value` is the function's value: each result the same bits for one point
// as for many. `out` overlies none of the others. A flag of faults is raised where the function has no derivative, as
// sqr has none at 0. Functions with steps have the derivative of the piece that the point belongs to: int and sgn 0
// everywhere, abs at 0 that of its right side.
void PartialOverBlock(int code, std::size_t which, const BlockOperand (&arguments)[3], const BlockOperand& value,
                      std::size_t n, double* out);

}  // namespace quorvex
