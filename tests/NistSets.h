#pragma once

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "TableFile.h"

namespace quorvex {

// A row of tests/data/nist/index.tsv, by the names of its header.
using NistSet = std::map<std::string, std::string>;

// The reference sets of one kind, "linear" or "nonlinear".
inline std::vector<NistSet> NistSets(const std::string& kind) {
  const auto rows = TableRows("nist/index.tsv", 20);
  const std::vector<std::string> names = rows.front();
  std::vector<NistSet> sets;
  for (const std::vector<std::string>& fields : rows) {
    NistSet set;
    for (std::size_t i = 0; i < names.size(); ++i) set[names[i]] = fields[i];
    if (set["kind"] == kind) sets.push_back(set);
  }
  return sets;
}

// Correct significant digits, `most` at most: as many as the certificate has.
inline double CorrectDigits(double value, double certified, double most) {
  const double error = certified == 0 ? std::abs(value) : std::abs(value - certified) / std::abs(certified);
  return error == 0 ? most : std::min(most, -std::log10(error));
}

}  // namespace quorvex
