#include "report/FitReport.h"

#include <algorithm>
#include <cmath>

#include "core/NumberText.h"

namespace quorvex {
namespace {

constexpr int kDigits = 7;
constexpr std::size_t kMostRows = 200, kRowsAtAnEnd = 20;

std::string With(char decimalSeparator, std::string number) {
  std::ranges::replace(number, '.', decimalSeparator);
  return number;
}

}  // namespace

bool ReportTable::HasHeadings() const {
  return std::ranges::any_of(Columns, [](const ReportColumn& column) { return !column.Heading.empty(); });
}

std::string ReportNumber(double value, char decimalSeparator) {
  if (std::isnan(value)) return {};
  return std::isinf(value) ? "infinite" : With(decimalSeparator, GeneralNumber(value, kDigits));
}

ReportTable TableOf(const ReportData& data, char decimalSeparator, std::string& note) {
  ReportTable table;
  table.Columns.push_back({"Point", true});
  for (const std::string& heading : data.Headings) table.Columns.push_back({heading, true});
  const std::size_t n = data.Columns.front().size();
  const bool isLong = n > kMostRows;
  note =
      isLong ? "The first and the last " + std::to_string(kRowsAtAnEnd) + " of " + std::to_string(n) + " points." : "";
  for (std::size_t i = 0; i < n; ++i) {
    if (isLong && i == kRowsAtAnEnd) {
      table.Rows.emplace_back(table.Columns.size(), "...");
      i = n - kRowsAtAnEnd;
    }
    std::vector<std::string> row = {std::to_string(i + 1)};
    for (const std::vector<double>& column : data.Columns)
      row.push_back(With(decimalSeparator, GeneralNumber(column[i])));
    table.Rows.push_back(std::move(row));
  }
  return table;
}

}  // namespace quorvex
