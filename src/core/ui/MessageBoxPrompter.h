#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

#include "core/Prompter.h"

class QFileDialog;

namespace quorvex {

// Talks to the user by message boxes titled "Quorvex" and by file dialogs. They stand over the dialog that is open,
// else over the window that the user works in, which has the keyboard again behind them, else over `parent`.
class MessageBoxPrompter : public Prompter {
 public:
  explicit MessageBoxPrompter(QWidget* parent);

  QString Folder;  // that file dialogs open in; empty for the current one

  void Refuse(const std::string& text) override;
  void Inform(const std::string& text) override;
  bool Ask(const std::string& text) override;
  std::optional<bool> AskOrCancel(const std::string& text) override;
  std::optional<std::string> AskText(const std::string& text, const std::string& initial) override;
  std::optional<std::string> AskColor(const std::string& text, const std::string& initial) override;
  std::optional<std::string> ChooseFileToSave(const std::string& title, const std::string& filter,
                                              const std::string& extension, const std::string& name) override;
  std::optional<std::string> ChooseFileToOpen(const std::string& title, const std::string& filter) override;
  // Beside the window's thread. Work of less than half a second shows nothing but the busy cursor.
  bool Wait(const std::string& text, const std::function<void(const LongWork&)>& work) override;

 private:
  QWidget* Over() const;
  std::optional<std::string> RunDialog(QFileDialog& dialog);

  QWidget* parent_;
  QPointer<QWidget> worked_;  // the window that was active last and is no dialog
  QObject watch_;
};

}  // namespace quorvex
