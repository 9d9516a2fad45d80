#include "sheet/ColumnNames.h"

#include <algorithm>

#include "core/NumberText.h"

namespace quorvex {

std::vector<std::string> ColumnNames(const std::vector<std::string>& headings) {
  std::vector<std::string> trimmed, names;
  for (const std::string& heading : headings) trimmed.emplace_back(Trim(heading));
  for (std::size_t i = 0; i < trimmed.size(); ++i) {
    const std::string& name = trimmed[i];
    const std::string number = std::to_string(i + 1);
    if (name.empty())
      names.push_back("Column " + number);
    else
      names.push_back(std::ranges::count(trimmed, name) > 1 ? name + " (column " + number + ")" : name);
  }
  return names;
}

std::string ColumnName(const DataSheet& sheet, std::size_t col) {
  return col >= 1 && col <= sheet.Headers.size() ? ColumnNames(sheet.Headers)[col - 1] : "";
}

std::vector<std::string> VariableNames(const DataSheet& sheet) {
  std::vector<std::string> names = DefaultHeaders(sheet.IndependentVariables, false);
  names.pop_back();  // Y
  for (std::size_t v = 0; v < names.size(); ++v)
    if (const std::string column = ColumnName(sheet, v + 1); column != names[v]) names[v] += " (" + column + ')';
  return names;
}

}  // namespace quorvex
