#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex {

// Whether a heading says that its column holds the standard deviations of Y: "sd", "y error", "Std. dev. (mV)",
// "sigma_y".
bool NamesDeviation(std::string_view heading);

// Which of the columns holds them, counted from 1, by the headings; 0 for none. X and Y take two others.
std::size_t DeviationColumn(const std::vector<std::string>& headings);

}  // namespace quorvex
