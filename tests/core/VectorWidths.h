#pragma once

#include <gtest/gtest.h>

#include "core/VectorWidth.h"

namespace quorvex {

// Runs `check` once with each width of vector instructions that this machine has.
template <class Check>
void WithEveryVectorWidth(Check check) {
  const VectorWidth before = VectorsInUse();
  for (const VectorWidth width : {VectorWidth::Two, VectorWidth::Four, VectorWidth::Eight}) {
    if (width > WidestVectors()) break;
    SCOPED_TRACE("vectors of " + std::to_string(2U << static_cast<unsigned>(width)));
    UseVectors(width);
    check();
  }
  UseVectors(before);
}

}  // namespace quorvex
