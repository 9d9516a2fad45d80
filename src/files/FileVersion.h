#pragma once

#include <algorithm>
#include <string_view>

namespace quorvex {

// The version text of the files that are written, and how that of any version begins.
inline constexpr std::string_view kFileVersion = "Quorvex:  Version 9.0";
inline constexpr std::string_view kVersionPrefix = kFileVersion.substr(0, kFileVersion.size() - 3);

// The versions there have been, 61 for 6.1, and the first whose projects, plots and models can be read.
inline constexpr int kVersions[] = {22, 30, 31, 40, 41, 50, 51, 52, 60, 61, 70, 71, 72, 80, 81, 82, 90};
inline constexpr int kOldestProject = 50, kOldestPlot = 81, kOldestModels = 30;

// The version that a text such as "Quorvex:  Version 6.1" names; 0 where it names none of these.
constexpr int VersionNamed(std::string_view text) {
  if (!text.starts_with(kVersionPrefix)) return 0;
  text.remove_prefix(kVersionPrefix.size());
  if (text.size() != 3 || text[1] != '.') return 0;
  const int number = (text[0] - '0') * 10 + (text[2] - '0');
  const bool digits = text[0] >= '0' && text[0] <= '9' && text[2] >= '0' && text[2] <= '9';
  return digits && std::ranges::find(kVersions, number) != std::end(kVersions) ? number : 0;
}

}  // namespace quorvex
