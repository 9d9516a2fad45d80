#pragma once

#include <QString>

#include "core/Prompter.h"

class QWidget;

namespace quorvex {

// Talks to the user by message boxes titled "Quorvex" and by file dialogs, over the window `parent`.
class MessageBoxPrompter : public Prompter {
 public:
  explicit MessageBoxPrompter(QWidget* parent) : parent_(parent) {}

  QString Folder;  // that file dialogs open in; empty for the current one

  void Refuse(const std::string& text) override;
  void Inform(const std::string& text) override;
  bool Ask(const std::string& text) override;
  std::optional<bool> AskOrCancel(const std::string& text) override;
  std::optional<std::string> AskText(const std::string& text, const std::string& initial) override;
  std::optional<std::string> ChooseFileToSave(const std::string& title, const std::string& filter,
                                              const std::string& extension, const std::string& name) override;
  // Beside the window's thread. Work of less than half a second shows nothing but the busy cursor.
  bool Wait(const std::string& text, const std::function<void(const LongWork&)>& work) override;

 private:
  QWidget* parent_;
};

}  // namespace quorvex
