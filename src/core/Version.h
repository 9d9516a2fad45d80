#pragma once

namespace quorvex {

// The program's version, such as "9.0.0". The build writes its one source, so that a new version compiles one file.
extern const char* const kVersion;

// Where the program's data lie once it is installed, from the folder of the program, such as "../share/quorvex".
extern const char* const kDataFolder;

}  // namespace quorvex
