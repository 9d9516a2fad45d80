#pragma once

#include "files/RecordIo.h"
#include "sheet/DataSheet.h"

namespace quorvex {

// The parts of a project file that its data sheet is kept in, listed for a RecordWriter or a RecordReader.

// How one column is shown.
template <typename Io, typename Format>
void ListFormat(Io& io, Format& format) {
  io.Since(61, format.NumberFormat);
  io(format.AlignHorizontal);
  io(format.WordWrap);
  io(format.AlignVertical);
  io.Since(61, format.Orientation);
  io(format.FontName);
  io(format.FontSize);
  io(format.FontBold);
  io(format.FontItalic);
  io(format.FontUnderline);
  io.Since(61, format.FontStrikeout);
  io(format.FontColor);
  io(format.FontOutline);
  io(format.FontShadow);
  io(format.ColumnStyle);
  io(format.ColumnWidth);
}

// The cells, line by line: numbers with a decimal point in any locale, other texts in quotes. The sheet that they are
// read into is empty.
void ListCells(RecordWriter& io, const DataSheet& sheet);
void ListCells(RecordReader& io, DataSheet& sheet);

}  // namespace quorvex
