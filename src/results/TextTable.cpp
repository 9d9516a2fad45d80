#include "results/TextTable.h"

#include <algorithm>

#include "core/Files.h"
#include "core/XmlText.h"

namespace quorvex {
namespace {

bool HasColumnHeadings(const TextTable& table) {
  for (std::size_t c = 0; c < table.ColumnCount(); ++c)
    if (!table.ColumnHeading(c).empty()) return true;
  return false;
}

std::string OneLine(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
  return text;
}

template <typename CellOf>
void AppendLine(std::string& text, std::size_t columns, CellOf cellOf) {
  const std::size_t start = text.size();
  std::size_t end = start;  // behind the last cell that is filled
  for (std::size_t c = 0; c < columns; ++c) {
    if (c > 0) text += '\t';
    const std::string cell = OneLine(cellOf(c));
    text += cell;
    if (!cell.empty()) end = text.size();
  }
  text.resize(end);
  text += NL;
}

void AppendCell(std::string& html, const char* open, const char* close, std::string_view text) {
  html.append(open).append(XmlText(text)).append(close);
}

// A label's value takes the width of all columns that are left, as a heading takes all.
void AppendHtmlRow(std::string& html, const TextTable& table, std::size_t row) {
  const std::size_t columns = table.ColumnCount();
  const RowKind kind = table.Kind(row);
  html += "<tr>";
  if (kind == RowKind::Heading) {
    AppendCell(html, ("<th align=\"left\" colspan=\"" + std::to_string(columns) + "\">").c_str(), "</th>",
               table.Cell(row, 0));
  } else if (kind == RowKind::Line) {
    AppendCell(html, "<td>", "</td>", table.Cell(row, 0));
    if (columns > 1)
      AppendCell(html, ("<td align=\"left\" colspan=\"" + std::to_string(columns - 1) + "\">").c_str(), "</td>",
                 table.Cell(row, 1));
  } else {
    const bool heading = kind == RowKind::ColumnHeadings;
    for (std::size_t c = 0; c < columns; ++c) {
      const char* open = heading ? (c == 0 ? "<th align=\"left\">" : "<th align=\"right\">")
                                 : (table.HasTexts(c) || IsRemark(table, row, c) ? "<td>" : "<td align=\"right\">");
      AppendCell(html, open, heading ? "</th>" : "</td>", table.Cell(row, c));
    }
  }
  html.append("</tr>").append(NL);
}

}  // namespace

bool IsRemark(const TextTable& table, std::size_t row, std::size_t column) {
  if (table.Kind(row) == RowKind::ColumnHeadings && row + 1 < table.RowCount() &&
      table.Kind(row + 1) == RowKind::Remarked)
    ++row;
  if (table.Kind(row) != RowKind::Remarked || column == 0 || table.Cell(row, column).empty()) return false;
  return column + 1 == table.ColumnCount() || table.Cell(row, column + 1).empty();
}

void Report::Add(RowKind kind, std::vector<std::string> cells) {
  columns_ = std::max(columns_, cells.size());
  rows_.push_back({kind, std::move(cells)});
}

void WriteTabSeparated(const TextTable& table, const TableSink& write) {
  const auto line = [&](auto cellOf) {
    std::string text;
    AppendLine(text, table.ColumnCount(), cellOf);
    return write(text);
  };
  if (HasColumnHeadings(table) && !line([&](std::size_t c) { return table.ColumnHeading(c); })) return;
  for (std::size_t row = 0; row < table.RowCount(); ++row)
    if (!line([&](std::size_t c) { return table.Cell(row, c); })) return;
}

void WriteHtml(const TextTable& table, const TableSink& write) {
  std::string html = "<!DOCTYPE html><html><head><meta charset=\"utf-8\"></head><body><table>";
  html += NL;
  if (HasColumnHeadings(table)) {
    html += "<tr>";
    for (std::size_t c = 0; c < table.ColumnCount(); ++c)
      AppendCell(html, "<th align=\"right\">", "</th>", table.ColumnHeading(c));
    html.append("</tr>").append(NL);
  }
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    AppendHtmlRow(html, table, row);
    if (!write(html)) return;
    html.clear();
  }
  write(html.append("</table></body></html>").append(NL));
}

std::string Gathered(TableWriter writeTable, const TextTable& table) {
  std::string text;
  writeTable(table, [&](std::string_view line) {
    text += line;
    return true;
  });
  return text;
}

std::string TabSeparated(const TextTable& table) { return Gathered(WriteTabSeparated, table); }
std::string Html(const TextTable& table) { return Gathered(WriteHtml, table); }

}  // namespace quorvex
