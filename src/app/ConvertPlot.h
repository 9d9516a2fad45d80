#pragma once

#include <string>
#include <vector>

namespace quorvex {

// What the command line "-plot FILE OUT..." asks for: each OUT becomes a picture of the plot file, or another plot
// file, by the ending of its name. Returns the exit code; what went wrong is told on standard error, a sentence each.
int ConvertPlot(const std::vector<std::string>& arguments);

}  // namespace quorvex
