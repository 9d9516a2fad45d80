#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace quorvex {

// `text` with parts in place of its marks $1, $2, ...; any other "$" stands as it is.
std::string FillText(std::string_view text, std::initializer_list<std::string_view> parts);

}  // namespace quorvex
