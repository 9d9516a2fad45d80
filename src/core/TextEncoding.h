#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quorvex {

// How many bytes the first character of a text in UTF-8 (RFC 3629) has; 0 where it does not begin with one, and at its
// end.
std::size_t Utf8Length(std::string_view bytes);

// Text as UTF-8: a byte order mark is skipped, and bytes that are not valid UTF-8 are taken as Windows-1252.
std::string DecodeText(std::string_view bytes);

// UTF-16 of either byte order as UTF-8, without its mark; nothing where the bytes don't begin with that mark. A
// surrogate without its other half, or half a unit at the end, becomes U+FFFD.
std::optional<std::string> DecodeUtf16(std::string_view bytes);

// Valid UTF-8 as UTF-16.
std::u16string EncodeUtf16(std::string_view text);

}  // namespace quorvex
