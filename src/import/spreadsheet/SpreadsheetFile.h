#pragma once

#include <string>
#include <vector>

#include "core/LongWork.h"
#include "core/Result.h"
#include "sheet/GridCells.h"

namespace quorvex {

// Spreadsheets as office programs save them: OpenDocument (.ods) and Office Open XML (.xlsx), told apart by content.
// The files of this folder are a library of their own, quorvex_spreadsheet, which the desktop program alone links: an
// unattended run neither needs an XML parser nor waits for one to be loaded.

// The names of a file's sheets in their order, at least one.
Result<std::vector<std::string>> ListSheets(const std::string& file, const LongWork& work = {});

// The cells of a sheet, each in its place. Numbers are numbers, in whatever format they are shown, and so is a text
// that NumericText reads with a decimal point. A formula gives the result that was saved with it; true and false are 1
// and 0; a date and time written as such is the days since 30 December 1899, as spreadsheets count them, and a time of
// day a fraction of a day. Office Open XML writes dates as numbers, which stand as they are; in the few files that
// count from 1904, cells with a format that shows a day, month or year get the 1462 days that are between. Columns with
// dates and times and no other numbers have their date patterns. Other texts
// are texts, cut as CutCellText cuts; an error and a formula without a saved result are empty. Columns right of the
// 16,384th are not kept.
//
// Both fail with the message of a failed import, which names the file: where it cannot be opened, is damaged or no
// spreadsheet, is protected by a password, or is too large. The file is unpacked and read piece by piece. Too large is
// what unpacks to more than 512 MiB, has more than 128 MiB of texts, 10,000 sheets or tags of more than 1 MiB, whose
// names and nesting take more than 32 MiB in the parser, or a sheet of more than 2^24 cells (128 MiB; empty ones above
// a column's last count, and a text counts for several) or 2^20 rows. Work that is cancelled ends after the next piece.
Result<GridCells> ReadSheet(const std::string& file, const std::string& sheet, const LongWork& work = {});

}  // namespace quorvex
