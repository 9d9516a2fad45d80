#pragma once

#include <span>
#include <string>
#include <string_view>

namespace quorvex {

struct HelpPage {
  std::string_view Window;  // its class
  std::string_view Page;    // "sheet.html", or "preferences.html#solver" for a part of one
};

std::span<const HelpPage> HelpPages();

// The page of the manual for a window, by the name of its class; the first page for one that has none.
std::string HelpPageOf(std::string_view windowClass);

}  // namespace quorvex
