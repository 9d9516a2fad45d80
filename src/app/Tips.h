#pragma once

#include <span>
#include <string_view>

namespace quorvex {

// What the tip form shows, one at a time.
std::span<const std::string_view> Tips();

}  // namespace quorvex
