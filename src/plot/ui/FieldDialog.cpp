#include "plot/ui/FieldDialog.h"

#include <QDialogButtonBox>
#include <QVBoxLayout>

#include "plot/ui/FieldPanel.h"

namespace quorvex {

FieldDialog::FieldDialog(const FieldGroup& group, const PlotEntries& entries, Prompter& prompter, QWidget* parent)
    : QDialog(parent), group_(group), entries_(entries), prompter_(prompter) {
  setObjectName(QString::fromStdString(group.Dialog->Form));
  setWindowTitle(QString::fromStdString(group.Title));
  panel_ = new FieldPanel(group_, entries.Original().Locale, this);
  panel_->setTitle({});
  connect(panel_, &FieldPanel::Edited, this, &FieldDialog::Edited);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &FieldDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(panel_);
  rows->addWidget(buttons);
}

void FieldDialog::accept() {
  const auto refusal = entries_.CheckGroup(group_);
  if (!refusal) return QDialog::accept();
  prompter_.Refuse(refusal->Message);
  panel_->GoTo(refusal->Control);
}

}  // namespace quorvex
