#include "solve/ui/SolveLog.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace quorvex {
namespace {

class SolveLog : public QDialog {
 public:
  SolveLog(QWidget* parent, const std::string& log);
};

SolveLog::SolveLog(QWidget* parent, const std::string& log) : QDialog(parent) {
  setObjectName("SolveLog");
  setWindowTitle("Solution Log");
  auto* text = new QPlainTextEdit(QString::fromStdString(log).remove('\r'), this);
  text->setObjectName("txtLog");
  text->setAccessibleName("Log of the last solve");
  text->setReadOnly(true);
  // Without a caret the keys would only scroll, and nothing could be selected by them.
  text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  text->setTabChangesFocus(true);
  text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(text);
  rows->addWidget(buttons);
  resize(90 * text->fontMetrics().averageCharWidth(), 28 * text->fontMetrics().height());
}

}  // namespace

void ShowSolveLog(QWidget* over, const std::string& log) { SolveLog(over, log).exec(); }

}  // namespace quorvex
