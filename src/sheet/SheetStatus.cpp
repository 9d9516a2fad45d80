#include "sheet/SheetStatus.h"

#include "sheet/ColumnNames.h"

namespace quorvex {
namespace {

// "X1, X2 and Y".
std::string Listed(const std::vector<std::string>& names) {
  std::string text = names.front();
  for (std::size_t i = 1; i < names.size(); ++i) text += (i + 1 < names.size() ? ", " : " and ") + names[i];
  return text;
}

}  // namespace

std::string SheetStatus(const DataSheet& sheet, std::size_t row, std::size_t col) {
  const std::size_t rows = sheet.Cells.GridLastRow();
  return ColumnName(sheet, col) + ", row " + std::to_string(row) + "   |   " +
         (rows == 0   ? "no data"
          : rows == 1 ? "1 row of data"
                      : std::to_string(rows) + " rows of data");
}

std::string EmptySheetHint(const DataSheet& sheet) {
  if (sheet.Cells.GridLastRow() != 0) return "";
  return "Type your measurements into the columns " + Listed(ColumnNames(sheet.Headers)) +
         ", or open one of the examples of the Help menu.";
}

}  // namespace quorvex
