#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "sheet/GridCells.h"

namespace quorvex {

// How a column of the sheet is shown: the record that files store, field by field. The codes of alignment, orientation
// and style are the numbers that files have always held; what draws the grid maps those it has an equal for.
struct ColumnFormat {
  std::string NumberFormat = "General";
  std::int32_t AlignHorizontal = 1;
  bool WordWrap = false;
  std::int32_t AlignVertical = 3;
  std::int32_t Orientation = 0;
  std::string FontName = "Arial";
  std::int32_t FontSize = 200;  // twentieths of a point
  bool FontBold = false, FontItalic = false, FontUnderline = false, FontStrikeout = false;
  std::int32_t FontColor = 0;  // RGB
  bool FontOutline = false, FontShadow = false;
  std::int32_t ColumnStyle = 255;
  std::int32_t ColumnWidth = 1100;  // grid width units

  bool operator==(const ColumnFormat&) const = default;
};

// The data sheet of a project: independent variables in the first columns, then the dependent variable, then, where
// there is one, the standard deviation.
struct DataSheet {
  // An empty sheet with the default headers and formats. 1 to 20 variables.
  DataSheet(std::size_t independentVariables, bool hasStandardDeviation);

  std::size_t IndependentVariables;
  bool HasStandardDeviation;
  std::vector<std::string> Headers;   // one per column
  std::vector<ColumnFormat> Formats;  // one per column
  GridCells Cells;

  std::size_t ColumnCount() const { return IndependentVariables + (HasStandardDeviation ? 2 : 1); }
};

// "X", "Y", "StDev" for one variable, else "X1", "X2", ..., "Y", "StDev".
std::vector<std::string> DefaultHeaders(std::size_t independentVariables, bool hasStandardDeviation);

}  // namespace quorvex
