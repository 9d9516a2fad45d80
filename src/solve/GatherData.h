#pragma once

#include <cstddef>
#include <vector>

#include "core/Prompter.h"
#include "core/Result.h"
#include "core/Settings.h"
#include "core/SolveData.h"
#include "sheet/DataSheet.h"

namespace quorvex {

// The order of gathered points. A fit wants those with one independent variable sorted by it.
enum class PointOrder { ByX, OfSheet };

// The points of a sheet.
struct GatheredData {
  SolveData Points;                // complete rows; weights computed
  std::vector<std::size_t> Rows;   // of the sheet, from 1, that the points stand in; of points in its order alone
  std::size_t IncompleteRows = 0;  // rows with some X or Y, left out
};

// Fails where a cell of a would-be point holds a text: "Line N: 'text' is not a number.". Costs a copy of the cells.
Result<GatheredData> GatherData(const DataSheet& sheet, PointOrder order = PointOrder::ByX);

// Asks whether to go on without incomplete rows, where there are any and the settings want that question.
bool MayLeaveOut(std::size_t incompleteRows, const Settings& settings, Prompter& user);

}  // namespace quorvex
