#include "project/ui/frmDeriveWindow.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QListWidget>
#include <QPushButton>

#include "core/ui/Controls.h"
#include "sheet/ui/SheetDialog.h"

namespace quorvex {
namespace {

QListWidget* AddList(QWidget* parent, const char* name, const QString& label, QGridLayout* cells, int row, int column,
                     int rows = 1) {
  auto* list = Named(new QListWidget(parent), name);
  list->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list->setAccessibleName(QString(label).remove('&').remove(':'));
  cells->addWidget(LabelFor(list, label, parent), row, column);
  cells->addWidget(list, row + 1, column, rows, 1);
  return list;
}

QPushButton* AddButton(QWidget* parent, const char* name, const QString& text, QBoxLayout* place) {
  auto* button = Named(new QPushButton(text, parent), name);
  button->setAutoDefault(false);
  place->addWidget(button);
  return button;
}

void Fill(QListWidget& list, const std::vector<std::string>& names) {
  list.clear();
  for (const std::string& name : names) list.addItem(QString::fromStdString(name));
}

std::vector<std::size_t> SelectedRows(const QListWidget& list) {
  std::vector<std::size_t> rows;
  for (int row = 0; row < list.count(); ++row)
    if (list.item(row)->isSelected()) rows.push_back(static_cast<std::size_t>(row));
  return rows;
}

}  // namespace

bool ShowDeriveWindow(QWidget* over, DeriveClass& derive, bool hasStandardDeviation, Prompter& user) {
  SheetDialog dialog(over, "frmDeriveWindow", "Derive New Project");
  auto* cells = new QGridLayout;
  QListWidget* lstData = AddList(&dialog, "lstData", "&Data in Current Project:", cells, 0, 0, 3);
  auto* forX = new QVBoxLayout;
  QPushButton* cmdAddX = AddButton(&dialog, "cmdAddX", "Add &X >", forX);
  QPushButton* cmdRemoveX = AddButton(&dialog, "cmdRemoveX", "< &Remove X", forX);
  forX->addStretch();
  cells->addLayout(forX, 1, 1);
  QListWidget* lstNewX = AddList(&dialog, "lstNewX", "&Independent variables (X):", cells, 0, 2);
  auto* forY = new QVBoxLayout;
  QPushButton* cmdAddY = AddButton(&dialog, "cmdAddY", "Add &Y >", forY);
  QPushButton* cmdRemoveY = AddButton(&dialog, "cmdRemoveY", "< R&emove Y", forY);
  cells->addLayout(forY, 3, 1);
  QListWidget* lstNewY = AddList(&dialog, "lstNewY", "De&pendent variable (Y):", cells, 2, 2);
  cells->setRowStretch(1, 1);
  // One line, and room for the buttons beside it.
  lstNewY->setFixedHeight(2 * cmdAddY->sizeHint().height() + forY->spacing());
  dialog.Rows()->addRow(cells);
  QCheckBox* ckShowSD = dialog.AddCheck("ckShowSD", "&Standard deviation column");
  QCheckBox* ckUseSD = dialog.AddCheck("ckUseSD", "&Use the existing standard deviations");

  const auto show = [&] {
    Fill(*lstNewX, derive.NewX());
    Fill(*lstNewY, derive.NewY());
    cmdRemoveX->setEnabled(lstNewX->count() > 0);
    cmdRemoveY->setEnabled(lstNewY->count() > 0);
    ckUseSD->setEnabled(hasStandardDeviation && ckShowSD->isChecked());
  };
  QObject::connect(cmdAddX, &QPushButton::clicked, &dialog, [&] {
    if (derive.AddX(SelectedRows(*lstData), user)) show();
  });
  QObject::connect(cmdAddY, &QPushButton::clicked, &dialog, [&] {
    if (derive.AddY(SelectedRows(*lstData), user)) show();
  });
  QObject::connect(cmdRemoveX, &QPushButton::clicked, &dialog, [&] {
    derive.RemoveX(SelectedRows(*lstNewX));
    show();
  });
  QObject::connect(cmdRemoveY, &QPushButton::clicked, &dialog, [&] {
    derive.RemoveY();
    show();
  });
  ckShowSD->setChecked(derive.ShowSD);
  ckUseSD->setChecked(derive.UseSD);
  QObject::connect(ckShowSD, &QCheckBox::toggled, &dialog, show);
  Fill(*lstData, derive.Data());
  show();
  lstData->setCurrentRow(0);
  lstData->setFocus();
  return dialog.Run([&] {
    derive.ShowSD = ckShowSD->isChecked();
    derive.UseSD = ckUseSD->isChecked();
    return derive.IsComplete(user);
  });
}

}  // namespace quorvex
