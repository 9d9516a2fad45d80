#pragma once

#include <cstddef>
#include <vector>

#include "core/Result.h"
#include "core/SolveData.h"
#include "project/SolvedList.h"
#include "sheet/DataSheet.h"

namespace quorvex {

// The points that the project's results are told of, in the order of its sheet.
struct ResultData {
  SolveData Points;               // with weights
  std::vector<std::size_t> Rows;  // of the sheet, from 1, that the points stand in
  std::size_t MissingPoints = 0;  // rows in which some of X and Y is there and some is not
};

// Fails where a cell of a point holds a text, in the words of LoadGridData.
Result<ResultData> LoadResultData(const DataSheet& sheet);

}  // namespace quorvex
