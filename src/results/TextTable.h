#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex {

// What a row of a table is.
enum class RowKind {
  Line,            // a label and its value, or a text that may take the whole width
  Heading,         // of the rows that follow
  ColumnHeadings,  // likewise, one text per column
  Values,          // one per column; all but the first are numbers, as a rule
  Remarked         // values, the last of which is a text that may take the rest of the width
};

// A table of texts, to be shown, copied, saved or printed. Rows and columns are counted from 0. Texts are made when
// they are asked for, so that a long table costs little until it is looked at.
class TextTable {
 public:
  virtual ~TextTable() = default;

  virtual std::size_t RowCount() const = 0;
  virtual std::size_t ColumnCount() const = 0;
  virtual std::string Cell(std::size_t row, std::size_t column) const = 0;  // "" for an empty cell
  virtual RowKind Kind(std::size_t /*row*/) const { return RowKind::Values; }
  virtual char DecimalSeparator() const { return '.'; }  // of its numbers
  // What stands over all rows of a column, perhaps in several lines; "" in every column of a table that has its
  // headings in rows.
  virtual std::string ColumnHeading(std::size_t /*column*/) const { return {}; }
  // Whether a column holds texts, which begin at the left; else numbers, which end at the right.
  virtual bool HasTexts(std::size_t column) const { return column == 0; }
  // Whether a column holds dates or times, in ISO form where all digits are shown.
  virtual bool HasDates(std::size_t /*column*/) const { return false; }
  // A text as wide as those of a column with a heading may become, where it is too long to be looked through.
  virtual std::string Widest(std::size_t column) const { return column == 0 ? "" : "-0.123456789012345"; }
};

// Whether a cell is the text at the end of a row of that kind, or its heading.
bool IsRemark(const TextTable& table, std::size_t row, std::size_t column);

// A table whose rows are made beforehand, each of its own kind and length.
class Report : public TextTable {
 public:
  struct Row {
    RowKind Kind = RowKind::Line;
    std::vector<std::string> Cells;

    bool operator==(const Row&) const = default;
  };

  explicit Report(char decimalSeparator = '.') : decimalSeparator_(decimalSeparator) {}

  void Add(RowKind kind, std::vector<std::string> cells);
  const std::vector<Row>& Rows() const { return rows_; }

  std::size_t RowCount() const override { return rows_.size(); }
  std::size_t ColumnCount() const override { return columns_; }
  std::string Cell(std::size_t row, std::size_t column) const override {
    return column < rows_[row].Cells.size() ? rows_[row].Cells[column] : std::string();
  }
  RowKind Kind(std::size_t row) const override { return rows_[row].Kind; }
  char DecimalSeparator() const override { return decimalSeparator_; }

 private:
  std::vector<Row> rows_;
  std::size_t columns_ = 0;
  char decimalSeparator_;
};

// A rectangle of another table, which outlives it.
class TableExcerpt : public TextTable {
 public:
  // The first row and column, and how many of both.
  TableExcerpt(const TextTable& table, std::size_t row, std::size_t column, std::size_t rows, std::size_t columns)
      : table_(table), row_(row), column_(column), rows_(rows), columns_(columns) {}

  std::size_t RowCount() const override { return rows_; }
  std::size_t ColumnCount() const override { return columns_; }
  std::string Cell(std::size_t row, std::size_t column) const override {
    return table_.Cell(row_ + row, column_ + column);
  }
  RowKind Kind(std::size_t row) const override { return table_.Kind(row_ + row); }
  char DecimalSeparator() const override { return table_.DecimalSeparator(); }
  bool HasDates(std::size_t column) const override { return table_.HasDates(column_ + column); }

 private:
  const TextTable& table_;
  std::size_t row_, column_, rows_, columns_;
};

// What takes a table line by line, and returns whether it wants more.
using TableSink = std::function<bool(std::string_view line)>;

// What writes a table in some form, and its whole text.
using TableWriter = void (*)(const TextTable& table, const TableSink& write);
std::string Gathered(TableWriter writeTable, const TextTable& table);

// The whole table as text: lines that end with NL, cells with a tab between two, none behind the last that is filled.
// A tab or a line end within a cell becomes a blank.
std::string TabSeparated(const TextTable& table);
void WriteTabSeparated(const TextTable& table, const TableSink& write);

// The same as an HTML document of one table, for spreadsheets and word processors.
std::string Html(const TextTable& table);
void WriteHtml(const TextTable& table, const TableSink& write);

}  // namespace quorvex
