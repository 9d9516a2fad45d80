#pragma once

#include <QClipboard>
#include <QGuiApplication>

#include "core/Clipboard.h"

namespace quorvex {

// The clipboard of the user's desktop.
class SystemClipboard : public Clipboard {
 public:
  std::string Text() const override { return QGuiApplication::clipboard()->text().toStdString(); }
  void SetText(const std::string& text) override {
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
  }
  // As text and as a table of HTML.
  void SetCells(const std::string& tabSeparated) override;
};

}  // namespace quorvex
