#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace quorvex {

// The ways to colour a surface by its values, as files, templates and settings number them.
enum MeshScheme : std::int16_t { kSpectrumScheme = 8, kTrueColorScheme = 9, kMeshSchemes = 14 };

// How a channel goes from the first band to the last.
enum class ChannelCourse { None, All, Rising, Falling };

struct MeshSchemeRow {
  const char* Name;
  const char* Entry;  // of a menu, "&" before the letter that goes to it
  // The name of the menu's switch, which ends in the scheme's number.
  const char* Switch;
  ChannelCourse Red, Green, Blue;

  constexpr std::string_view Number() const {
    return std::string_view(Switch).substr(std::string_view("MeshColorScheme").size());
  }
};

// Spectrum has no courses, and True color no bands.
inline constexpr auto kMeshSchemeRows = [] {
  using enum ChannelCourse;
  return std::array<MeshSchemeRow, kMeshSchemes>{{
      {"Greyscale", "&Greyscale", "MeshColorScheme0", Rising, Rising, Rising},
      {"Red/Black", "&Red/Black", "MeshColorScheme1", Rising, None, None},
      {"Blue/Black", "&Blue/Black", "MeshColorScheme2", None, None, Rising},
      {"Green/Black", "Gr&een/Black", "MeshColorScheme3", None, Rising, None},
      {"Cyan/Black", "&Cyan/Black", "MeshColorScheme4", None, Rising, Rising},
      {"Red/Blue", "Red/Bl&ue", "MeshColorScheme5", Rising, None, Falling},
      {"Red/Green", "Re&d/Green", "MeshColorScheme6", Rising, Falling, None},
      {"Blue/Green", "B&lue/Green", "MeshColorScheme7", None, Falling, Rising},
      {"Spectrum", "&Spectrum", "MeshColorScheme8", None, None, None},
      {"True color", "&True color", "MeshColorScheme9", None, None, None},
      {"White/Red", "&White/Red", "MeshColorScheme10", All, Rising, Rising},
      {"White/Blue", "W&hite/Blue", "MeshColorScheme11", Rising, Rising, All},
      {"White/Green", "Wh&ite/Green", "MeshColorScheme12", Rising, All, Rising},
      {"White/Cyan", "White/C&yan", "MeshColorScheme13", Rising, All, All},
  }};
}();

}  // namespace quorvex
