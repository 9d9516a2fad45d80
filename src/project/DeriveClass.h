#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "core/Prompter.h"
#include "project/Project.h"
#include "project/ProjectKind.h"

namespace quorvex {

// The selection that a new project is derived by: which columns of a sheet become its X's and its Y. The sheet outlives
// it.
class DeriveClass {
 public:
  explicit DeriveClass(const DataSheet& sheet)
      : ShowSD(sheet.HasStandardDeviation), UseSD(sheet.HasStandardDeviation), sheet_(sheet) {}

  bool ShowSD;  // the new project has standard deviations
  bool UseSD;   // those of the sheet, where it has some, else an empty column

  // The columns to select from, by their headers, and last one that is empty. Selections are places in this list.
  std::vector<std::string> Data() const;
  std::vector<std::string> NewX() const { return NamesOf(x_); }
  std::vector<std::string> NewY() const { return NamesOf(y_); }

  // Adds what is selected. False, and the user is told why, where that does not do; to replace Y they are asked.
  bool AddX(const std::vector<std::size_t>& selected, Prompter& user);
  bool AddY(const std::vector<std::size_t>& selected, Prompter& user);
  // Takes out entries of NewX by their places there, and Y.
  void RemoveX(const std::vector<std::size_t>& selected);
  void RemoveY() { y_.clear(); }

  // Whether there are enough for a project; refused where there are not.
  bool IsComplete(Prompter& user) const;
  // What it is made for, and its sheet: headings, formats and values of the columns, defaults for those that are empty,
  // as is a Y that nobody has chosen.
  ProjectKind Kind() const { return {x_.size(), ShowSD}; }
  DataSheet NewSheet() const;

 private:
  std::vector<std::string> NamesOf(const std::vector<std::size_t>& places) const;

  const DataSheet& sheet_;
  std::vector<std::size_t> x_, y_;  // places in Data; one or no Y
};

}  // namespace quorvex
