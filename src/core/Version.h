#pragma once

namespace quorvex {

// The program's version, such as "9.0.0". The build writes its one source, so that a new version compiles one file.
extern const char* const kVersion;

}  // namespace quorvex
