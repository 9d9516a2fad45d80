#include "project/ui/NewProj.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QSpinBox>

#include "core/SolveData.h"

namespace quorvex {

std::optional<ProjectKind> AskProjectKind(QWidget* over, const ProjectKind& proposed, const QString& title,
                                          const QString& note) {
  QDialog dialog(over);
  dialog.setObjectName("NewProj");
  dialog.setWindowTitle(title);
  auto* txtVariables = new QSpinBox(&dialog);
  auto* chkStDev = new QCheckBox("&Standard deviation of Y", &dialog);
  txtVariables->setObjectName("txtVariables");
  txtVariables->setRange(1, kMostIndependentVariables);
  txtVariables->setValue(static_cast<int>(proposed.IndependentVariables));
  txtVariables->setAccessibleName("Independent variables");
  chkStDev->setObjectName("chkStDev");
  chkStDev->setChecked(proposed.HasStandardDeviation);
  chkStDev->setToolTip("A column behind Y that weighs each point by how well it is known");
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);

  auto* rows = new QFormLayout(&dialog);
  rows->addRow("&Independent variables (X):", txtVariables);
  rows->addRow(chkStDev);
  if (!note.isEmpty()) {
    auto* label = new QLabel(note, &dialog);
    label->setWordWrap(true);
    rows->addRow(label);
  }
  rows->addRow(buttons);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return ProjectKind{static_cast<std::size_t>(txtVariables->value()), chkStDev->isChecked()};
}

}  // namespace quorvex
