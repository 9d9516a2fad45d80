#include "core/ui/ListChooser.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace quorvex {

ListChooser::ListChooser(QWidget* parent, const QString& title, const QString& label, const QStringList& rows)
    : QDialog(parent), txtFind(new QLineEdit(this)), lstRows(new QListWidget(this)) {
  setWindowTitle(title);
  txtFind->setObjectName("txtFind");
  txtFind->setClearButtonEnabled(true);
  lstRows->setObjectName("lstRows");
  lstRows->setAccessibleName(QString(label).remove('&').remove(':'));
  lstRows->addItems(rows);
  lstRows->setCurrentRow(0);
  auto* find = new QLabel("&Find:", this);
  find->setBuddy(txtFind);
  auto* heading = new QLabel(label, this);
  heading->setBuddy(lstRows);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  cmdOK = buttons->button(QDialogButtonBox::Ok);
  cmdOK->setObjectName("cmdOK");

  connect(txtFind, &QLineEdit::textChanged, this, &ListChooser::Find);
  connect(lstRows, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* search = new QHBoxLayout;
  search->addWidget(find);
  search->addWidget(txtFind);
  auto* all = new QVBoxLayout(this);
  all->addLayout(search);
  all->addWidget(heading);
  all->addWidget(lstRows);
  all->addWidget(buttons);
  resize(560, 420);
}

std::size_t ListChooser::Chosen() const { return static_cast<std::size_t>(lstRows->currentRow()); }

// A row is current all the time, if need be one that is hidden, which then can't be chosen.
void ListChooser::Find(const QString& part) {
  int first = -1;
  for (int row = lstRows->count() - 1; row >= 0; --row) {
    const bool fits = lstRows->item(row)->text().contains(part, Qt::CaseInsensitive);
    lstRows->setRowHidden(row, !fits);
    if (fits) first = row;
  }
  if (first >= 0 && lstRows->isRowHidden(lstRows->currentRow())) lstRows->setCurrentRow(first);
  cmdOK->setEnabled(first >= 0);
}

}  // namespace quorvex
