#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace quorvex {

// The fields of a file, each with its separator.
inline std::vector<std::string> FieldsOf(const std::string& text) {
  std::vector<std::string> fields(1);
  bool quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') quoted = !quoted;
    fields.back() += text[i];
    if (!quoted && (text[i] == ',' || text[i] == '\n')) fields.emplace_back();
  }
  fields.pop_back();
  return fields;
}

inline std::string Joined(const std::vector<std::string>& fields) {
  std::string text;
  for (const std::string& field : fields) text += field;
  return text;
}

inline std::size_t IndexOf(const std::vector<std::string>& fields, const std::string& field, std::size_t from = 0) {
  const auto it = std::find(fields.begin() + static_cast<std::ptrdiff_t>(from), fields.end(), field);
  EXPECT_NE(it, fields.end()) << field;
  return static_cast<std::size_t>(it - fields.begin());
}

}  // namespace quorvex
