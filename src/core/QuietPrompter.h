#pragma once

#include "core/Prompter.h"

namespace quorvex {

// Says nothing and answers No: for what is tried without a user.
class QuietPrompter : public Prompter {
 public:
  void Refuse(const std::string&) override {}
  void Inform(const std::string&) override {}
  bool Ask(const std::string&) override { return false; }
  std::optional<bool> AskOrCancel(const std::string&) override { return std::nullopt; }
  std::optional<std::string> AskText(const std::string&, const std::string&) override { return std::nullopt; }
  std::optional<std::string> ChooseFileToSave(const std::string&, const std::string&, const std::string&,
                                              const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> ChooseFileToOpen(const std::string&, const std::string&) override { return std::nullopt; }
};

}  // namespace quorvex
