#pragma once

#include <string_view>

#include "sheet/GridCells.h"

namespace quorvex {

// Empties each cell whose displayed text, without blanks around it, is the marker. For cells that did not come from a
// text file; there the parser compares with the text as it stood in the file.
void BlankMissingMarker(GridCells& cells, std::string_view marker);

}  // namespace quorvex
