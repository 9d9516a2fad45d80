#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "core/Prompter.h"
#include "core/Settings.h"
#include "core/SolveData.h"
#include "sheet/DataSheet.h"

namespace quorvex {

// The order of gathered points. A fit wants those with one independent variable sorted by it.
enum class PointOrder { ByX, OfSheet };

// The points of a sheet, and the rows that are none. A text is no value: a row with one counts as incomplete, too, so
// that whoever reads the sheet, now or from a file, reads the same points.
struct GatheredData {
  SolveData Points;                // complete rows; weights computed
  std::size_t IncompleteRows = 0;  // rows with some X or Y, left out
  std::size_t TextRows = 0;        // those among them that have all X and Y, but a text
  std::size_t TextCells = 0;       // the texts in those
  CellPlace FirstLeftOut = {};     // the first text, or without one the first cell that is missing
};

// Costs a copy of the cells.
GatheredData GatherData(const DataSheet& sheet, PointOrder order = PointOrder::ByX);

// "Row 5, column 'Ozone': 'NA' is not a number. 37 cells in 37 rows of the data are no numbers.", "" without texts.
std::string TextRowsText(const GatheredData& data, const DataSheet& sheet);

// Asks whether to go on without the rows that are left out, where there are any: always about texts, about incomplete
// rows where the settings want that question.
bool AsksToLeaveOut(const GatheredData& data, const Settings& settings);
bool MayLeaveOut(const GatheredData& data, const DataSheet& sheet, const Settings& settings, Prompter& user);

}  // namespace quorvex
