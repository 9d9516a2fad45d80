#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

#include "core/Files.h"
#include "core/Limits.h"
#include "sheet/GridCells.h"

namespace quorvex {

// The characters that end a cell, as a sum.
enum DelimiterMask : int { kTabDelimiter = 1, kCommaDelimiter = 2, kSpaceDelimiter = 4, kSemicolonDelimiter = 8 };

// How the lines of a text file are to be read.
struct DelimitedFormat {
  int Delimiters = kTabDelimiter;  // of DelimiterMask; 0 takes a line as one cell
  bool IgnoreConsecutive = false;  // delimiters in a row count as one
  bool OverrideDecimal = true;     // "." is a decimal point whatever the locale says
  char DecimalSeparator = '.';     // the locale's
  bool QuotesHold = false;         // a delimiter between double quotes ends no cell, and two quotes there are one
  bool AllTexts = false;           // no cell becomes a number, as of headings
  std::string_view MissingMarker;  // a cell with this text, blanks around it aside, is left empty; "" marks nothing
  std::size_t FirstLine = 1;       // lines before it are skipped
  std::size_t LineLimit = std::numeric_limits<std::size_t>::max();  // how many lines are read
  std::size_t ColumnLimit = kMostColumnsRead;                       // cells to the right of it are not kept
};

struct DelimitedLines {
  GridCells Cells;
  std::size_t Rows = 0;  // lines that were read, blank ones too; 0 where the text ends before the first
};

// Splits the lines of a text file into cells, a row per line. Lines end with CR LF, LF or CR and are taken without the
// blanks around them. A cell that begins and ends with a double quote counts without the two; a delimiter between
// quotes splits as any other, but for QuotesHold. A cell with a number, as NumericText has it in the locale, becomes a
// number, a cell of blanks stays empty, and anything else is a text, decoded by DecodeText, without the blanks around
// it, and where it is longer than 255 characters cut to 252 with "..." behind.
//
// With OverrideDecimal in a locale of another separator each "." of a cell is read as that separator. Lines are split
// first: with commas as delimiters "1.5" is one number under a decimal comma too.
//
// The marker is compared with the cell as it stands in the file, with quotes and without, so -999 marks -999 and
// "-999", but not -999.0.
//
// One pass over the bytes; a number is converted where it stands.
DelimitedLines ParseDelimitedLines(std::string_view text, const DelimitedFormat& format);

// The same of a file that is open, without all of its text in memory. Returns 0 or the file error's number. With
// several threads each parses a part of a piece; the cells are the same for any number of them.
int ReadDelimitedLines(FileLines& file, const DelimitedFormat& format, DelimitedLines& lines, int threads = 1);

// A text of more than 255 characters of UTF-8 becomes its first 252 and three dots; no cell of a grid holds more.
std::string CutCellText(std::string text);

}  // namespace quorvex
