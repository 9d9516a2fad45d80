#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvex {

// Whether a text is the unit of a column and not its name: "mV", "(s)", "[counts/s]", "-".
bool IsUnit(std::string_view text);

// Whether a line below headings tells their units: all of its texts are units, empty ones aside.
bool AreUnits(const std::vector<std::string>& texts);

// A heading with its unit, "time (s)", or the heading alone where there is none.
std::string WithUnit(const std::string& heading, std::string_view unit);

}  // namespace quorvex
