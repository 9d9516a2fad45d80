#include "core/ui/frmTemplatePrompt.h"

#include <QColorDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

#include "core/ui/Controls.h"

namespace quorvex {

frmTemplatePrompt::frmTemplatePrompt(const std::string& text, const std::string& initial, QWidget* parent)
    : QDialog(parent), txtPrompt(Named(new QLineEdit(QString::fromStdString(initial), this), "txtPrompt")) {
  setObjectName("frmTemplatePrompt");
  setWindowTitle("Quorvex");
  const QString prompt = QString::fromStdString(text);
  txtPrompt->setAccessibleName(prompt);
  txtPrompt->selectAll();
  auto* pick = Named(new QPushButton(tr("&Pick..."), this), "Command1");
  pick->setAutoDefault(false);
  connect(pick, &QPushButton::clicked, this, &frmTemplatePrompt::Pick);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* entry = new QHBoxLayout;
  entry->addWidget(txtPrompt, 1);
  entry->addWidget(pick);
  auto* column = new QVBoxLayout(this);
  column->addWidget(LabelFor(txtPrompt, prompt, this));
  column->addLayout(entry);
  column->addWidget(buttons);
}

std::string frmTemplatePrompt::Text() const { return txtPrompt->text().toStdString(); }

void frmTemplatePrompt::Pick() {
  static const QRegularExpression kParts("(\\d+)\\D+(\\d+)\\D+(\\d+)");
  const auto parts = kParts.match(txtPrompt->text());
  const QColor present(parts.captured(1).toInt(), parts.captured(2).toInt(), parts.captured(3).toInt());
  const QColor picked = QColorDialog::getColor(present.isValid() ? present : QColor(Qt::black), this);
  if (picked.isValid())
    txtPrompt->setText(QString("(%1, %2, %3)").arg(picked.red()).arg(picked.green()).arg(picked.blue()));
}

}  // namespace quorvex
