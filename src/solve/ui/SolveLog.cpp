#include "solve/ui/SolveLog.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QTimer>
#include <QVBoxLayout>

namespace quorvex {

void ShowSolveLog(QWidget* over, const std::string& log, std::size_t from) {
  QDialog dialog(over);
  dialog.setObjectName("SolveLog");
  dialog.setWindowTitle("Solution Log");
  const auto shown = [](const std::string& part) { return QString::fromStdString(part).remove('\r'); };
  auto* text = new QPlainTextEdit(shown(log), &dialog);
  text->setObjectName("txtLog");
  text->setAccessibleName("Log of the last solve");
  text->setReadOnly(true);
  // Without a caret the keys would only scroll, and nothing could be selected by them.
  text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  text->setTabChangesFocus(true);
  text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, &dialog);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  auto* rows = new QVBoxLayout(&dialog);
  rows->addWidget(text);
  rows->addWidget(buttons);
  dialog.resize(90 * text->fontMetrics().averageCharWidth(), 28 * text->fontMetrics().height());
  if (from > 0) {
    // From below, so that the line comes to stand at the top.
    QTextCursor at = text->textCursor();
    at.movePosition(QTextCursor::End);
    text->setTextCursor(at);
    at.setPosition(static_cast<int>(shown(log.substr(0, from)).size()));
    QTimer::singleShot(0, text, [text, at] { text->setTextCursor(at); });
  }
  dialog.exec();
}

}  // namespace quorvex
