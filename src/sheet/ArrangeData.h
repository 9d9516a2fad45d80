#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "sheet/GridCells.h"

namespace quorvex {

// Which column, from 1, each one of the data becomes by an order that is not "default": 0 for one that is dropped.
// Empty where the order has too few entries.
std::vector<std::size_t> ArrangedColumns(std::string_view columnOrder, std::size_t independentVariables,
                                         char listSeparator);

// Puts the columns of imported data into the order of the sheet: independent variables, dependent variable, standard
// deviation. `columnOrder` is "default", which leaves them as they are, or says for each column of the data what it
// holds: "x" or "x1" to "x20", "y", "sd", anything else for a column to be dropped, in any case, with `listSeparator`
// between. A number of x above `independentVariables` counts on into the columns behind. Of two columns for one place
// the later stays. False, and nothing changed, where the list has fewer than independentVariables + 1 entries.
bool ArrangeData(GridCells& cells, std::string_view columnOrder, std::size_t independentVariables, char listSeparator);

}  // namespace quorvex
