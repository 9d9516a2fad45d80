#pragma once

#include <cstddef>

namespace quorvex {

// What a new project is made for.
struct ProjectKind {
  std::size_t IndependentVariables = 1;
  bool HasStandardDeviation = false;

  bool operator==(const ProjectKind&) const = default;
};

}  // namespace quorvex
