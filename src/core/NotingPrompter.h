#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/NumberText.h"
#include "core/QuietPrompter.h"

namespace quorvex {

// Answers No and keeps what would have been said, a line each: for a log or a terminal to tell it.
class NotingPrompter final : public QuietPrompter {
 public:
  void Refuse(const std::string& text) override { Note(text); }
  // Nobody can answer, so what is told is why it was asked, which is all but the last sentence.
  bool Ask(const std::string& text) override {
    Note(text.substr(0, text.rfind(". ") + 1));
    return false;
  }

  const std::vector<std::string>& Notes() const { return notes_; }
  std::string Last() const { return notes_.empty() ? "" : notes_.back(); }

 private:
  void Note(std::string_view text) {
    std::string line;
    while (!text.empty()) line.append(line.empty() ? "" : " ").append(TakeLine(text));
    if (!line.empty()) notes_.push_back(std::move(line));
  }

  std::vector<std::string> notes_;
};

}  // namespace quorvex
