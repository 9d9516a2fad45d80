#include "equation/DerivativeRules.h"

#include <cstddef>

namespace quorvex {

bool HasPartial(int code, std::size_t) { return code == 2 || code == 6 || code == 7; }

void PartialOverBlock(int code, std::size_t, const BlockOperand (&arguments)[3], const BlockOperand& value,
                      std::size_t n, double* out) {
  for (std::size_t i = 0; i < n; ++i) out[i] = code == 2 ? value.At(i) : 1 / arguments[0].At(i);
}

}  // namespace quorvex
