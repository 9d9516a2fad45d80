#pragma once

#include <cstddef>

#include "core/Result.h"
#include "core/SolveData.h"
#include "sheet/DataSheet.h"

namespace quorvex {

// What a sheet has to solve.
struct GatheredData {
  SolveData Points;                // complete rows; with one independent variable sorted by X; weights computed
  std::size_t IncompleteRows = 0;  // rows with some X or Y, left out
};

// Fails where a cell of a would-be point holds a text: "Line N: 'text' is not a number.". Costs a copy of the cells.
Result<GatheredData> GatherData(const DataSheet& sheet);

}  // namespace quorvex
