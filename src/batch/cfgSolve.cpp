#include "batch/cfgSolve.h"

#include <cstdio>

namespace quorvex {

void cfgSolve::DDEText(std::string_view text) {
  std::printf("%.*s\n", static_cast<int>(text.size()), text.data());
  // Through a pipe the lines would otherwise all arrive at the end.
  std::fflush(stdout);
}

}  // namespace quorvex
