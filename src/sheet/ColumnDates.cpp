#include "sheet/ColumnDates.h"

#include <algorithm>
#include <cmath>

namespace quorvex {

ColumnDates::ColumnDates(const GridCells& cells, const LocaleText& locale, std::optional<DateOrder> ambiguous)
    : locale_(locale) {
  if (!cells.HasTexts()) return;
  const std::size_t rows = cells.GridLastRow();
  for (std::size_t col = 1; col <= cells.GridLastCol(); ++col) {
    DateColumn dates;
    for (std::size_t row = 1; row <= rows; ++row)
      if (const double cell = cells.Cell(row, col); GridCells::IsText(cell)) dates.Add(cells.TextBehind(cell));
    columns_.push_back(dates.Locale(locale, ambiguous.value_or(dates.Expected(locale))));
    if (dates.IsAmbiguous()) ambiguous_.emplace_back(col, dates.Either());
  }
}

void NumberDates(GridCells& cells, const LocaleText& locale) {
  if (!cells.HasTexts()) return;
  const ColumnDates dates(cells, locale, DateOrder::YearFirst);
  const std::size_t rows = cells.GridLastRow();
  for (std::size_t col = 1; col <= cells.GridLastCol(); ++col) {
    for (std::size_t row = 1; row <= rows; ++row) {
      const double cell = cells.Cell(row, col);
      if (!GridCells::IsText(cell)) continue;
      if (const auto date = ReadDate(cells.TextBehind(cell), dates.LocaleOf(col)))
        cells.SetGridCellNumber(row, col, date->Days);
    }
  }
}

bool TakesDatePattern(const DataSheet& sheet, std::size_t col, std::size_t firstRow, std::size_t lastRow) {
  if (col > sheet.Formats.size() || sheet.Formats[col - 1].NumberFormat != ColumnFormat().NumberFormat) return false;
  for (std::size_t row = 1; row <= sheet.Cells.GridLastRow(); ++row)
    if ((row < firstRow || row > lastRow) && !std::isnan(sheet.Cells.Cell(row, col))) return false;
  return true;
}

void SetPatterns(DataSheet& sheet, const ColumnPatterns& patterns) {
  for (const auto& [col, pattern] : patterns) {
    ColumnFormat& format = sheet.Formats[col - 1];
    if (format.NumberFormat != ColumnFormat().NumberFormat && !IsDatePattern(format.NumberFormat)) continue;
    format.NumberFormat = pattern;
    constexpr std::int32_t kCharacters = 16;  // that a column takes before anybody makes it wider
    const auto shown = static_cast<std::int32_t>(pattern.size());
    format.ColumnWidth = std::max(format.ColumnWidth, ColumnFormat().ColumnWidth * shown / kCharacters);
  }
}

}  // namespace quorvex
