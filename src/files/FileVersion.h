#pragma once

#include <string_view>

namespace quorvex {

// The version text of the files that are written.
inline constexpr std::string_view kFileVersion = "Quorvex:  Version 9.0";

}  // namespace quorvex
