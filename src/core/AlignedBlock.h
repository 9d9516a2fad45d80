#pragma once

#include <array>

#include "core/Limits.h"

namespace quorvex {

// Values at the points of a block, from the border of a cache line on: there even the widest registers load theirs from
// one line and not from two.
struct alignas(64) AlignedBlock : std::array<double, kBlock> {};

}  // namespace quorvex
