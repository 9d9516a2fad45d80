#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/Prompter.h"

namespace quorvex {

// Writes down what a command says, one entry each with a word for its kind, and answers as the test set it up.
class RecordingPrompter : public Prompter {
 public:
  bool Answer = true;               // to every question
  bool Cancel = false;              // answers a question that allows it
  std::optional<std::string> Text;  // typed when asked for one; nothing cancels
  std::optional<std::string> File;  // chosen in the file dialog; nothing cancels

  std::vector<std::string> Said;
  std::string Last() const { return Said.empty() ? "" : Said.back(); }

  void Refuse(const std::string& text) override { Said.push_back("refuse: " + text); }
  void Inform(const std::string& text) override { Said.push_back("inform: " + text); }
  bool Ask(const std::string& text) override {
    Said.push_back("ask: " + text);
    return Answer;
  }
  std::optional<bool> AskOrCancel(const std::string& text) override {
    const bool answer = Ask(text);
    return Cancel ? std::nullopt : std::optional(answer);
  }
  std::optional<std::string> AskText(const std::string& text, const std::string& initial) override {
    Said.push_back("text: " + text + "|" + initial);
    return Text;
  }
  std::optional<std::string> ChooseFileToSave(const std::string& title, const std::string& filter,
                                              const std::string& extension, const std::string& name) override {
    Said.push_back("save: " + title + "|" + filter + "|" + extension + (name.empty() ? "" : "|" + name));
    return File;
  }
  std::optional<std::string> ChooseFileToOpen(const std::string& title, const std::string& filter) override {
    Said.push_back("open: " + title + "|" + filter);
    return File;
  }
};

}  // namespace quorvex
