#include "sheet/ArrangeData.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "core/Limits.h"
#include "core/NumberText.h"

namespace quorvex {
namespace {

// The column that an entry of the list asks for, 0 for none.
std::size_t TargetColumn(std::string_view entry, std::size_t independentVariables) {
  if (EqualNoCase(entry, "x")) return 1;
  if (EqualNoCase(entry, "y")) return independentVariables + 1;
  if (EqualNoCase(entry, "sd")) return independentVariables + 2;
  if (entry.size() < 2 || !EqualNoCase(entry.substr(0, 1), "x") || entry[1] == '0') return 0;
  std::size_t number = 0;
  const char* const end = entry.data() + entry.size();
  const auto [stop, error] = std::from_chars(entry.data() + 1, end, number);
  return error == std::errc() && stop == end && number <= kMostIndependentVariables ? number : 0;
}

}  // namespace

std::vector<std::size_t> ArrangedColumns(std::string_view columnOrder, std::size_t independentVariables,
                                         char listSeparator) {
  std::vector<std::size_t> targets;
  for (std::size_t begin = 0; begin <= columnOrder.size();) {
    const std::size_t end = std::min(columnOrder.find(listSeparator, begin), columnOrder.size());
    targets.push_back(TargetColumn(Trim(columnOrder.substr(begin, end - begin)), independentVariables));
    begin = end + 1;
  }
  if (targets.size() < independentVariables + 1) targets.clear();
  return targets;
}

bool ArrangeData(GridCells& cells, std::string_view columnOrder, std::size_t independentVariables, char listSeparator) {
  if (EqualNoCase(Trim(columnOrder), "default")) return true;
  const std::vector<std::size_t> targets = ArrangedColumns(columnOrder, independentVariables, listSeparator);
  if (targets.empty()) return false;
  cells.MoveColumns(targets);
  return true;
}

}  // namespace quorvex
