#include "report/TableBlocks.h"

#include <algorithm>
#include <utility>

#include "core/NumberText.h"

namespace quorvex {
namespace {

constexpr std::string_view kWords[] = {"", "none", "infinite", "Infinity"};  // among numbers

// Without what leads from a label to its value.
std::string Label(std::string_view text) {
  while (!text.empty() && (text.back() == ' ' || text.back() == '=' || text.back() == ':')) text.remove_suffix(1);
  return std::string(text);
}

bool IsNumber(const std::string& cell, const LocaleText& locale) {
  return NumericText(DelocalizeExpression(cell, locale)) || std::ranges::find(kWords, cell) != std::end(kWords);
}

class Gatherer {
 public:
  Gatherer(const LocaleText& locale, std::initializer_list<std::string_view> without)
      : locale_(locale), without_(without) {}

  void Take(const Report::Row& row) {
    if (row.Kind == RowKind::Heading) {
      Flush();
      skips_ = IsLeftOut(row.Cells[0]);
      table_.Caption = row.Cells[0];
    } else if (skips_) {
      return;
    } else if (row.Kind == RowKind::ColumnHeadings) {
      Head(row.Cells);
    } else if (row.Kind == RowKind::Line) {
      Line(row.Cells);
    } else {
      table_.Rows.push_back(row.Cells);
    }
  }

  std::vector<ReportBlock> Finish() {
    Flush();
    return std::move(blocks_);
  }

 private:
  bool IsLeftOut(const std::string& text) const { return std::ranges::find(without_, text) != without_.end(); }

  // Headings of two rows, one above the other, become one.
  void Head(const std::vector<std::string>& headings) {
    if (!table_.Rows.empty()) Flush();
    table_.Columns.resize(std::max(table_.Columns.size(), headings.size()));
    for (std::size_t c = 0; c < headings.size(); ++c)
      table_.Columns[c].Heading += (table_.Columns[c].Heading.empty() ? "" : " ") + headings[c];
  }

  void Line(const std::vector<std::string>& cells) {
    if (cells.empty() || IsLeftOut(cells[0])) return;
    if (table_.HasHeadings()) Flush();
    // Some lines have their value behind a colon.
    const std::size_t colon = cells.size() > 1 ? std::string::npos : cells[0].find(": ");
    if (colon != std::string::npos)
      table_.Rows.push_back({cells[0].substr(0, colon), cells[0].substr(colon + 2)});
    else
      table_.Rows.push_back({Label(cells[0]), cells.size() > 1 ? cells[1] : ""});
  }

  void Flush() {
    ReportTable table = std::exchange(table_, {});
    if (table.Rows.empty()) {
      if (!table.Caption.empty() && !skips_) blocks_.emplace_back(ReportText{table.Caption});
      return;
    }
    std::size_t columns = table.Columns.size();
    for (const auto& row : table.Rows) columns = std::max(columns, row.size());
    table.Columns.resize(columns);
    for (auto& row : table.Rows) row.resize(columns);
    for (std::size_t c = 1; c < columns; ++c)
      table.Columns[c].HasNumbers = table.HasHeadings() && std::ranges::all_of(table.Rows, [&](const auto& row) {
                                      return IsNumber(row[c], locale_);
                                    });
    blocks_.emplace_back(std::move(table));
  }

  const LocaleText& locale_;
  const std::vector<std::string_view> without_;
  std::vector<ReportBlock> blocks_;
  ReportTable table_;
  bool skips_ = false;
};

}  // namespace

std::vector<ReportBlock> BlocksOf(const Report& report, const LocaleText& locale,
                                  std::initializer_list<std::string_view> without) {
  Gatherer gatherer(locale, without);
  for (const Report::Row& row : report.Rows()) gatherer.Take(row);
  return gatherer.Finish();
}

}  // namespace quorvex
