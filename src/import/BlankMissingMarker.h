#pragma once

#include <string_view>

#include "sheet/GridCells.h"

namespace quorvex {

// Empties each cell whose displayed text, without blanks around it, is the marker. For cells that did not come from a
// text file; there the parser compares with the text as it stood in the file.
void BlankMissingMarker(GridCells& cells, std::string_view marker);

// The same for the result of a query, where a marker such as "NaN", "Inf" or "-Infinity" also stands for the other
// spellings that drivers have of that value. Without a sign it means infinite values of either.
void BlankMissingResults(GridCells& cells, std::string_view marker);

}  // namespace quorvex
