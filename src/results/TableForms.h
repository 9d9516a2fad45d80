#pragma once

#include <string>

#include "results/TextTable.h"

namespace quorvex {

// The whole table as comma-separated values: lines that end with CR LF, a cell in quotation marks where it holds one, a
// line end or the delimiter, which is a semicolon where numbers have a decimal comma. A label and its value are two
// cells. (RFC 4180.)
void WriteCsv(const TextTable& table, const TableSink& write);

// The same in Markdown: tables with bars, numbers to the right, and what stands above them as headings and lines of
// text. Characters that would mean something else are escaped.
void WriteMarkdown(const TextTable& table, const TableSink& write);

// How a table can be written to a file.
struct TableForm {
  const char* Filter;      // of a file dialog
  const char* Extensions;  // a blank between two
  TableWriter Write;
};

// The filters of all forms, for a file dialog.
std::string TableFilters();

// The form that a file's name asks for, text with tabs where it asks for none.
const TableForm& FormOfFile(const std::string& file);

}  // namespace quorvex
