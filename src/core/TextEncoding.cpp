#include "core/TextEncoding.h"

#include <array>

namespace quorvex {
namespace {

// Windows-1252 differs from Latin-1 at 0x80 to 0x9F (Unicode's mapping table CP1252.TXT); the five codes that it leaves
// undefined stand for themselves.
constexpr std::array<char16_t, 32> kWindows1252 = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                   0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void AppendUtf8(std::string& text, char32_t code) {
  if (code < 0x80) {
    text += static_cast<char>(code);
    return;
  }
  if (code < 0x800) {
    text += static_cast<char>(0xC0 | code >> 6);
  } else {
    if (code < 0x10000) {
      text += static_cast<char>(0xE0 | code >> 12);
    } else {
      text += static_cast<char>(0xF0 | code >> 18);
      text += static_cast<char>(0x80 | (code >> 12 & 0x3F));
    }
    text += static_cast<char>(0x80 | (code >> 6 & 0x3F));
  }
  text += static_cast<char>(0x80 | (code & 0x3F));
}

bool IsUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t length = Utf8Length(bytes);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

}  // namespace

// No overlong forms, no surrogates, nothing above U+10FFFF.
std::size_t Utf8Length(std::string_view bytes) {
  if (bytes.empty()) return 0;
  const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const unsigned lead = at(0);
  if (lead < 0x80) return 1;
  const std::size_t length = lead >= 0xC2 && lead <= 0xDF   ? 2
                             : lead >= 0xE0 && lead <= 0xEF ? 3
                             : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                            : 0;
  if (length == 0 || bytes.size() < length) return 0;
  // Overlong forms, surrogates and what exceeds U+10FFFF show in the second byte.
  const unsigned lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const unsigned highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  if (at(1) < lowest || at(1) > highest) return 0;
  for (std::size_t k = 2; k < length; ++k)
    if ((at(k) & 0xC0) != 0x80) return 0;
  return length;
}

std::string DecodeText(std::string_view bytes) {
  if (bytes.substr(0, 3) == "\xEF\xBB\xBF") bytes.remove_prefix(3);
  if (IsUtf8(bytes)) return std::string(bytes);
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  for (const char c : bytes) {
    const auto code = static_cast<unsigned char>(c);
    AppendUtf8(text, code >= 0x80 && code <= 0x9F ? kWindows1252[code - 0x80u] : code);
  }
  return text;
}

std::optional<std::string> DecodeUtf16(std::string_view bytes) {
  const bool littleEndian = bytes.starts_with("\xFF\xFE");
  if (!littleEndian && !bytes.starts_with("\xFE\xFF")) return std::nullopt;
  constexpr char32_t kReplacement = 0xFFFD;
  const auto unit = [&](std::size_t i) {
    const auto first = static_cast<unsigned char>(bytes[i]), second = static_cast<unsigned char>(bytes[i + 1]);
    return static_cast<char32_t>(littleEndian ? second << 8 | first : first << 8 | second);
  };
  std::string text;
  text.reserve(bytes.size() / 2);
  for (std::size_t i = 2; i < bytes.size(); i += 2) {
    const char32_t code = i + 1 < bytes.size() ? unit(i) : kReplacement;
    const bool leads = code >= 0xD800 && code < 0xDC00, trails = code >= 0xDC00 && code < 0xE000;
    const char32_t next = leads && i + 3 < bytes.size() ? unit(i + 2) : 0;
    // Two surrogates make one character, and half a pair makes none.
    if (next >= 0xDC00 && next < 0xE000) {
      AppendUtf8(text, 0x10000 + ((code - 0xD800) << 10) + (next - 0xDC00));
      i += 2;
    } else {
      AppendUtf8(text, leads || trails ? kReplacement : code);
    }
  }
  return text;
}

std::u16string EncodeUtf16(std::string_view text) {
  std::u16string units;
  for (std::size_t i = 0; i < text.size();) {
    const unsigned lead = static_cast<unsigned char>(text[i++]);
    char32_t code = lead < 0x80 ? lead : lead < 0xE0 ? lead & 0x1F : lead < 0xF0 ? lead & 0x0F : lead & 0x07;
    while (i < text.size() && (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80)
      code = code << 6 | (static_cast<unsigned char>(text[i++]) & 0x3F);
    if (code >= 0x10000) {
      code -= 0x10000;
      units += static_cast<char16_t>(0xD800 | code >> 10);
      code = 0xDC00 | (code & 0x3FF);
    }
    units += static_cast<char16_t>(code);
  }
  return units;
}

}  // namespace quorvex
