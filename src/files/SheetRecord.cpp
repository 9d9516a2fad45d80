#include "files/SheetRecord.h"

#include <optional>

namespace quorvex {
namespace {

constexpr const char* kCells = "INPUT";

void PutCell(FieldWriter& out, const GridCells& cells, double cell) {
  if (GridCells::IsEmpty(cell))
    out.EmptyField();
  else if (GridCells::IsText(cell))
    out.Field(cells.TextBehind(cell));
  else
    out.Field(cell);
}

// What is neither a number nor quoted would have the fields out of step.
void TakeCell(FieldReader& in, GridCells& cells, std::size_t row, std::size_t col) {
  const FieldReader::Field field = in.Next();
  if (Trim(field.Text).empty()) return;
  if (const std::optional<double> value = NumericText(field.Text))
    cells.SetGridCellNumber(row, col, *value);
  else if (field.Quoted)
    cells.SetGridCellText(row, col, field.Text);
  else
    in.Fail();
}

}  // namespace

void ListCells(RecordWriter& io, const DataSheet& sheet) {
  GridCells cells = sheet.Cells;  // whose columns are taken out
  const std::size_t rows = cells.GridLastRow();
  std::vector<std::vector<double>> columns;
  for (std::size_t col = 1; col <= sheet.ColumnCount(); ++col) columns.push_back(cells.TakeColumn(col, rows));
  Section(io, kCells, [&] {
    io(rows);
    for (std::size_t row = 0; row < rows; ++row) {
      for (const std::vector<double>& column : columns) PutCell(io.Out(), cells, column[row]);
      io.Out().EndLine();
    }
  });
}

void ListCells(RecordReader& io, DataSheet& sheet) {
  Section(io, kCells, [&] {
    const auto rows = static_cast<std::size_t>(io.Count());
    for (std::size_t row = 1; row <= rows && io.Good(); ++row)
      for (std::size_t col = 1; col <= sheet.ColumnCount(); ++col) TakeCell(io.In(), sheet.Cells, row, col);
  });
}

}  // namespace quorvex
