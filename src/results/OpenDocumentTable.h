#pragma once

#include "results/TextTable.h"

namespace quorvex {

// More cells than this fill no sheet of a spreadsheet program.
inline constexpr std::size_t kMostSpreadsheetCells = std::size_t{1} << 24;

// The table as an OpenDocument spreadsheet (.ods) of one sheet, in which every cell that reads as a number is one. The
// texts are made twice: their sizes stand in front of them.
void WriteOpenDocument(const TextTable& table, const TableSink& write);

}  // namespace quorvex
