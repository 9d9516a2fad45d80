#pragma once

#include <string>
#include <vector>

#include "core/Result.h"

namespace quorvex {

// The table of a parameter run: each row is one combination, that is, one run.
struct ParameterTable {
  std::vector<std::string> Names;  // of the columns
  std::vector<std::vector<std::string>> Rows;
  bool IsSeries = false;  // the rows are the columns of a series, the one value being their names
};

// Reads a comma-separated parameter file: the first line that is not empty names the columns; then fields follow, as
// many to a row as there are names, separated by commas and line ends. A quoted field may hold commas and line ends,
// and
// "" stands for a quote in it; other fields are trimmed. Fails with a sentence where the file cannot be read, has no
// row, or ends within a row or a quoted field.
Result<ParameterTable> ReadParameterFile(const std::string& name);

}  // namespace quorvex
