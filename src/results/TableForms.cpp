#include "results/TableForms.h"

#include <algorithm>
#include <iterator>
#include <sstream>

#include "core/Files.h"
#include "core/NumberText.h"
#include "results/OpenDocumentTable.h"

namespace quorvex {
namespace {

constexpr TableForm kForms[] = {{"Text files (*.txt)", "txt", WriteTabSeparated},
                                {"CSV files (*.csv)", "csv", WriteCsv},
                                {"OpenDocument spreadsheets (*.ods)", "ods", WriteOpenDocument},
                                {"Markdown files (*.md)", "md", WriteMarkdown},
                                {"HTML files (*.html *.htm)", "html htm", WriteHtml}};

// How many cells of a row are there up to the last that is filled.
std::size_t Filled(const TextTable& table, std::size_t row) {
  std::size_t count = table.ColumnCount();
  while (count > 0 && table.Cell(row, count - 1).empty()) --count;
  return count;
}

std::string Quoted(const std::string& cell, char delimiter) {
  if (cell.find_first_of(std::string("\"\r\n") + delimiter) == std::string::npos) return cell;
  std::string quoted = "\"";
  for (const char c : cell) quoted.append(c == '"' ? 2 : 1, c);
  return quoted + '"';
}

std::string EscapedMarkdown(const std::string& text) {
  constexpr std::string_view kMeanSomething = "\\`*_[]<>|#~&";
  std::string escaped;
  for (const char c : text) {
    if (c == '\r') continue;
    if (kMeanSomething.find(c) != std::string_view::npos) escaped += '\\';
    escaped += c == '\n' || c == '\t' ? ' ' : c;
  }
  return escaped;
}

// Writes a table row by row, and knows whether it stands in a table of Markdown.
class MarkdownWriter {
 public:
  MarkdownWriter(const TextTable& table, const TableSink& write) : table_(table), write_(write) {}

  void Write() {
    for (std::size_t c = 0; c < table_.ColumnCount(); ++c) headed_ = headed_ || !table_.ColumnHeading(c).empty();
    if (headed_ && !Begin(table_.ColumnCount(), [&](std::size_t c) { return table_.ColumnHeading(c); })) return;
    for (std::size_t row = 0; row < table_.RowCount(); ++row)
      if (!WriteRow(row)) return;
  }

 private:
  bool WriteRow(std::size_t row) {
    const RowKind kind = table_.Kind(row);
    if (kind == RowKind::Line || kind == RowKind::Heading) {
      width_ = 0;
      const std::string text =
          EscapedMarkdown(table_.Cell(row, 0) + (kind == RowKind::Line ? table_.Cell(row, 1) : ""));
      if (kind == RowKind::Heading) return Line("## " + text) && Line("");
      return Line(text.empty() ? "" : text + "  ");  // two blanks break a line
    }
    const auto cell = [&](std::size_t c) { return table_.Cell(row, c); };
    if (width_ > 0) return Cells(cell);
    const std::size_t width = headed_ ? table_.ColumnCount() : WidthFrom(row);
    if (kind == RowKind::ColumnHeadings) return Begin(width, cell);
    return Begin(width, [](std::size_t) { return std::string(); }) && Cells(cell);
  }

  // Of the widest row of the values that begin there.
  std::size_t WidthFrom(std::size_t row) const {
    std::size_t width = 1;
    for (; row < table_.RowCount() && table_.Kind(row) != RowKind::Line && table_.Kind(row) != RowKind::Heading; ++row)
      width = std::max(width, Filled(table_, row));
    return width;
  }

  template <typename CellOf>
  bool Begin(std::size_t width, CellOf cellOf) {
    width_ = width;
    std::string rule = "|";
    for (std::size_t c = 0; c < width; ++c) rule += table_.HasTexts(c) ? " :-- |" : " --: |";
    return Cells(cellOf) && Line(rule);
  }

  template <typename CellOf>
  bool Cells(CellOf cellOf) {
    std::string line = "|";
    for (std::size_t c = 0; c < width_; ++c) line += ' ' + EscapedMarkdown(cellOf(c)) + " |";
    return Line(line);
  }

  bool Line(const std::string& text) { return write_(std::string(text).append(NL)); }

  const TextTable& table_;
  const TableSink& write_;
  bool headed_ = false;
  std::size_t width_ = 0;  // of the present table, 0 outside of any
};

}  // namespace

void WriteCsv(const TextTable& table, const TableSink& write) {
  const char delimiter = table.DecimalSeparator() == ',' ? ';' : ',';
  const auto line = [&](std::size_t cells, auto cellOf) {
    std::string text;
    for (std::size_t c = 0; c < cells; ++c) {
      if (c > 0) text += delimiter;
      text += Quoted(cellOf(c), delimiter);
    }
    return write(text.append(NL));
  };
  bool headed = false;
  for (std::size_t c = 0; c < table.ColumnCount(); ++c) headed = headed || !table.ColumnHeading(c).empty();
  if (headed && !line(table.ColumnCount(), [&](std::size_t c) { return table.ColumnHeading(c); })) return;
  for (std::size_t row = 0; row < table.RowCount(); ++row)
    if (!line(headed ? table.ColumnCount() : Filled(table, row), [&](std::size_t c) { return table.Cell(row, c); }))
      return;
}

void WriteMarkdown(const TextTable& table, const TableSink& write) { MarkdownWriter(table, write).Write(); }

std::string TableFilters() {
  std::string filters;
  for (const TableForm& form : kForms) filters += (filters.empty() ? "" : ";;") + std::string(form.Filter);
  return filters;
}

const TableForm& FormOfFile(const std::string& file) {
  const std::string lower = ToLower(file);
  const auto asksFor = [&](const TableForm& form) {
    std::istringstream extensions(form.Extensions);
    return std::any_of(std::istream_iterator<std::string>(extensions), {},
                       [&](const std::string& extension) { return lower.ends_with('.' + extension); });
  };
  const auto found = std::find_if(std::begin(kForms), std::end(kForms), asksFor);
  return found == std::end(kForms) ? kForms[0] : *found;
}

}  // namespace quorvex
