#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace quorvex {

// A folder of its own for a test, gone with all that is in it at the end.
class TemporaryFolder {
 public:
  TemporaryFolder() : path_(std::filesystem::temp_directory_path() / "quorvex-test-XXXXXX") {
    std::string pattern = path_;
    path_ = mkdtemp(pattern.data());
  }
  ~TemporaryFolder() { std::filesystem::remove_all(path_); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string Path(const std::string& name) const { return path_ / name; }

  std::string Write(const std::string& name, const std::string& content) const {
    std::filesystem::create_directories((path_ / name).parent_path());
    std::ofstream(path_ / name, std::ios::binary) << content;
    return Path(name);
  }

  std::string Read(const std::string& name) const {
    std::ifstream file(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::filesystem::path path_;
};

// An environment variable for the length of a test; nullptr unsets it.
class TemporaryVariable {
 public:
  TemporaryVariable(const char* name, const char* value) : name_(name) {
    if (const char* old = getenv(name)) {
      had_ = true;
      old_ = old;
    }
    value != nullptr ? setenv(name, value, 1) : unsetenv(name);
  }
  ~TemporaryVariable() { had_ ? setenv(name_, old_.c_str(), 1) : unsetenv(name_); }
  TemporaryVariable(const TemporaryVariable&) = delete;
  TemporaryVariable& operator=(const TemporaryVariable&) = delete;

 private:
  const char* name_;
  bool had_ = false;
  std::string old_;
};

}  // namespace quorvex
