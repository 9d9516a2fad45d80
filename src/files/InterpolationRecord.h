#pragma once

#include "engine/InterpClass.h"
#include "files/RecordIo.h"

namespace quorvex {

// A solved interpolation as a project file holds it, in a section of that name.
inline constexpr const char* kInterpolation = "INTERPOLATIONCLASS";

void WriteInterpolation(RecordWriter& io, const InterpClass& curve);
InterpClass ReadInterpolation(RecordReader& io);

}  // namespace quorvex
