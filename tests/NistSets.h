#pragma once

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "Paths.h"

namespace quorvex {

inline std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::stringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

// A row of tests/data/nist/index.tsv, by the names of its header.
using NistSet = std::map<std::string, std::string>;

// The reference sets of one kind, "linear" or "nonlinear".
inline std::vector<NistSet> NistSets(const std::string& kind) {
  std::ifstream file(TestData("nist/index.tsv"));
  std::string line;
  std::getline(file, line);
  const std::vector<std::string> names = Split(line, '\t');
  std::vector<NistSet> sets;
  while (std::getline(file, line)) {
    const std::vector<std::string> fields = Split(line, '\t');
    NistSet set;
    for (std::size_t i = 0; i < names.size(); ++i) set[names[i]] = fields[i];
    if (set["kind"] == kind) sets.push_back(set);
  }
  return sets;
}

inline std::vector<double> Numbers(const std::string& text) {
  std::vector<double> numbers;
  for (const std::string& word : Split(text, ' ')) numbers.push_back(std::stod(word));
  return numbers;
}

// Correct significant digits, `most` at most: as many as the certificate has.
inline double CorrectDigits(double value, double certified, double most) {
  const double error = certified == 0 ? std::abs(value) : std::abs(value - certified) / std::abs(certified);
  return error == 0 ? most : std::min(most, -std::log10(error));
}

}  // namespace quorvex
