#include "solve/ui/SolveLog.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace quorvex {

void ShowSolveLog(QWidget* over, const std::string& log) {
  QDialog dialog(over);
  dialog.setObjectName("SolveLog");
  dialog.setWindowTitle("Solution Log");
  auto* text = new QPlainTextEdit(QString::fromStdString(log).remove('\r'), &dialog);
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
  dialog.exec();
}

}  // namespace quorvex
