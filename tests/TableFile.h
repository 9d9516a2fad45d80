#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "Paths.h"

namespace quorvex {

inline std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::stringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

// Any number that a double holds: also a hexadecimal or subnormal one, "inf" and "nan".
inline double Number(const std::string& text) { return std::strtod(text.c_str(), nullptr); }

inline std::vector<double> Numbers(const std::string& text) {
  std::vector<double> numbers;
  for (const std::string& word : Split(text, ' ')) numbers.push_back(Number(word));
  return numbers;
}

// A text in which \t, \n and \r, two characters each, stand for the one that C++ means by them.
inline std::string Unescaped(std::string text) {
  for (const auto& [written, meant] : {std::pair{"\\t", "\t"}, {"\\n", "\n"}, {"\\r", "\r"}})
    for (std::size_t at = 0; (at = text.find(written, at)) != std::string::npos;) text.replace(at, 2, meant);
  return text;
}

// The rows of a table in tests/data. Tabs separate its columns, of which the last ones may be left out; a line that
// begins with "#" tells of what follows.
inline std::vector<std::vector<std::string>> TableRows(const std::string& name, std::size_t columns) {
  std::ifstream file(TestData(name));
  std::vector<std::vector<std::string>> rows;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with('#')) continue;
    rows.push_back(Split(line, '\t'));
    EXPECT_LE(rows.back().size(), columns) << name << ": " << line;
    rows.back().resize(columns);
  }
  EXPECT_FALSE(rows.empty()) << name;
  return rows;
}

}  // namespace quorvex
