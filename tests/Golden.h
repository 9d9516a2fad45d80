#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "Paths.h"

namespace quorvex {

// Holds a whole text against tests/golden/`name`, byte by byte, and shows the first line that differs. With
// UPDATE_GOLDEN=1 in the environment the file is rewritten instead; its diff is then read like code.
inline void ExpectGolden(const std::string& name, const std::string& text) {
  const std::filesystem::path path = TestGolden(name);
  if (const char* update = std::getenv("UPDATE_GOLDEN"); update != nullptr && std::string(update) == "1") {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
    return;
  }
  std::ifstream file(path, std::ios::binary);
  ASSERT_TRUE(file) << "no golden file " << path;
  const std::string golden{std::istreambuf_iterator<char>(file), {}};
  if (text == golden) return;

  std::size_t start = 0;
  for (int line = 1;; ++line) {
    const auto lineOf = [&](const std::string& whole) {
      if (start > whole.size()) return std::string("(end of text)");
      const std::size_t end = whole.find('\n', start);
      return whole.substr(start, end == std::string::npos ? end : end + 1 - start);
    };
    const std::string expected = lineOf(golden), actual = lineOf(text);
    if (expected == actual) {
      start += expected.size();
      continue;
    }
    ADD_FAILURE() << name << ", line " << line << "\n  expected: " << testing::PrintToString(expected)
                  << "\n  actual:   " << testing::PrintToString(actual);
    return;
  }
}

}  // namespace quorvex
