#pragma once

#include <string>
#include <string_view>

namespace quorvex {

// A text as a string of JSON (RFC 8259), in its quotes: always valid UTF-8, with U+FFFD for bytes that are none.
std::string JsonText(std::string_view text);

// A number of JSON that reads back to the same 64-bit value, in as few digits as do; null for what JSON has no number
// for, infinities and what is no number at all.
std::string JsonNumber(double value);

}  // namespace quorvex
