#pragma once

#include <ctime>
#include <string>

namespace quorvex {

// A moment in local time, as "2026-11-21 04:30:12".
std::string DateText(std::time_t moment);

}  // namespace quorvex
