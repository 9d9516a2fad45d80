#pragma once

#include <cstdint>
#include <string>
#include <type_traits>

#include "core/Settings.h"

namespace quorvex {

// How a font of new plots is stored: each of its parts under a key of its own, made of what the font is for, the part
// and, in 3D plots, "3d", as in "zaxistitlefontheight3d". The text "0" leaves what the plot has by itself.
template <typename Io, typename Font, typename Color>
void ListFontParts(const Io& io, Font& font, Color& color) {
  io("fontname", font.Name);
  io("fontbold", font.Bold);
  io("fontheight", font.Size);
  io("fontitalic", font.Italic);
  io("color", color);
}

// Reads the parts that were chosen; false where none was.
template <typename Font>
bool ReadFontParts(const Settings& settings, const std::string& prefix, const std::string& suffix, Font& font,
                   std::int32_t& color) {
  bool any = false;
  const auto read = [&]<typename Part>(const char* part, Part& field) {
    const std::string key = prefix + part + suffix;
    if (settings.Text(key) == "0") return;
    any = true;
    if constexpr (std::is_same_v<Part, std::string>)
      field = settings.Text(key);
    else if constexpr (std::is_same_v<Part, bool>)
      field = settings.Text(key) == "true";
    else if constexpr (std::is_same_v<Part, double>)
      field = settings.Number(key);
    else
      field = settings.Integer(key);
  };
  ListFontParts(read, font, color);
  return any;
}

}  // namespace quorvex
