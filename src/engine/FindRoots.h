#pragma once

#include <functional>
#include <optional>
#include <vector>

namespace quorvex {

// Where a function of one variable is 0 between XMin and XMax, ascending, no two neighbours equal. `Intervals` equal
// parts are searched: a part whose ends have values of different sign holds a root, found by bisection, and so is an
// end where the function is 0. Two roots in one part are missed, and a pole passes for a root. Points where the
// function has no value are left out.
std::vector<double> FindRoots(const std::function<std::optional<double>(double)>& function, double XMin, double XMax,
                              int Intervals);

}  // namespace quorvex
