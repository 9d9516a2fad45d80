#pragma once

#include <span>
#include <string_view>

namespace quorvex {

// The one of `known` that somebody may have meant by `word`: the first of those that the fewest letters put in, left
// out, exchanged or swapped with their neighbours make of it, in any case, where that is at most one letter in three.
// Empty where none is that near.
std::string_view NearestWord(std::string_view word, std::span<const std::string_view> known);

}  // namespace quorvex
