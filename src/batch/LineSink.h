#pragma once

#include <functional>
#include <string_view>

namespace quorvex {

// Takes the lines of an output, without their ends: a file that is being written, or a text that is kept.
using LineSink = std::function<void(std::string_view)>;

}  // namespace quorvex
