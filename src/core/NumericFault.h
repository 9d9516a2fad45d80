#pragma once

#include <exception>

namespace quorvex {

// A numerical breakdown: a singular matrix, an overflow, the logarithm of a negative number. The one exception type of
// the core. It carries no text: whoever knows the reason leaves it in the model's `ErrorMessage`, and each operation
// catches the fault once.
class NumericFault : public std::exception {
 public:
  const char* what() const noexcept override { return "numerical fault"; }
};

}  // namespace quorvex
