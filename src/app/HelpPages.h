#pragma once

#include <span>
#include <string>
#include <string_view>

namespace quorvex {

struct HelpPage {
  std::string_view Window;  // its name
  std::string_view Page;    // "sheet.html", or "preferences.html#solver" for a part of one
};

std::span<const HelpPage> HelpPages();

// The page of the manual for a window, by the window's name; empty for one that has none of its own.
std::string_view HelpPageOf(std::string_view window);

// The name of the place that a heading is, as links of Markdown have it: "Starts: Assign" is "starts-assign".
std::string HeadingAnchor(std::string_view heading);

// Said where no page can be shown.
inline constexpr const char* kNoManual = "The manual cannot be shown. It belongs into the folder share/quorvex/docs.";

}  // namespace quorvex
