#include "project/DeriveClass.h"

#include <algorithm>

#include "core/Limits.h"
#include "sheet/ColumnNames.h"

namespace quorvex {
namespace {

constexpr const char* kBlankColumn = "<Blank Column>";
constexpr const char* kNothingSelected =
    "Nothing is selected to add. You must first select one or more columns to add from the 'Data in Current Project' "
    "list.";

}  // namespace

std::vector<std::string> DeriveClass::Data() const {
  std::vector<std::string> names = ColumnNames(sheet_.Headers);
  names.push_back(kBlankColumn);
  return names;
}

std::vector<std::string> DeriveClass::NamesOf(const std::vector<std::size_t>& places) const {
  const std::vector<std::string> all = Data();
  std::vector<std::string> names;
  for (const std::size_t place : places) names.push_back(all[place]);
  return names;
}

bool DeriveClass::AddX(const std::vector<std::size_t>& selected, Prompter& user) {
  if (selected.empty()) {
    user.Refuse(kNothingSelected);
    return false;
  }
  if (x_.size() + selected.size() > kMostIndependentVariables) {
    user.Refuse("A project can have no more than " + std::to_string(kMostIndependentVariables) +
                " independent variables (X).");
    return false;
  }
  x_.insert(x_.end(), selected.begin(), selected.end());
  return true;
}

bool DeriveClass::AddY(const std::vector<std::size_t>& selected, Prompter& user) {
  if (selected.empty()) {
    user.Refuse(kNothingSelected);
    return false;
  }
  if (selected.size() > 1) {
    user.Refuse(
        "A project can only contain a single dependent variable (Y). Please select a single item from the list of data "
        "in the current project.");
    return false;
  }
  if (!y_.empty() && !user.Ask("A project can only contain a single dependent variable (Y) and there is already one "
                               "specified. Replace it with the selected item?"))
    return false;
  y_ = selected;
  return true;
}

void DeriveClass::RemoveX(const std::vector<std::size_t>& selected) {
  std::vector<std::size_t> left;
  for (std::size_t i = 0; i < x_.size(); ++i)
    if (std::find(selected.begin(), selected.end(), i) == selected.end()) left.push_back(x_[i]);
  x_ = std::move(left);
}

bool DeriveClass::IsComplete(Prompter& user) const {
  if (x_.empty()) user.Refuse("You must select at least one independent variable for the new project.");
  return !x_.empty();
}

DataSheet DeriveClass::NewSheet() const {
  DataSheet derived(x_.size(), ShowSD);
  const std::size_t rows = sheet_.Cells.GridLastRow();
  const auto copy = [&](std::size_t place, std::size_t to) {  // places from 0
    if (place >= sheet_.ColumnCount()) return;                // the blank one
    derived.Headers[to] = sheet_.Headers[place];
    derived.Formats[to] = sheet_.Formats[place];
    if (rows > 0)
      derived.Cells.PutRange({1, to + 1, rows, to + 1}, sheet_.Cells.CopyRange({1, place + 1, rows, place + 1}));
  };
  for (std::size_t v = 0; v < x_.size(); ++v) copy(x_[v], v);
  if (!y_.empty()) copy(y_.front(), x_.size());
  if (ShowSD && UseSD && sheet_.HasStandardDeviation) copy(sheet_.IndependentVariables + 1, x_.size() + 1);
  return derived;
}

}  // namespace quorvex
