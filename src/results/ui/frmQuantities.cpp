#include "results/ui/frmQuantities.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "core/ui/Controls.h"
#include "results/ReportedQuantities.h"

namespace quorvex {

frmQuantities::frmQuantities(QWidget* parent, ProjectEditor& editor, ModelClass& model)
    : QDialog(parent),
      editor_(editor),
      model_(model),
      user_(this),
      quantities_(Named(new QPlainTextEdit(this), "quantities")) {
  setObjectName("frmQuantities");
  setWindowTitle("Other Quantities");
  QStringList names;
  for (const Coefficient& one : model.Coefficients) names << QString::fromStdString(one.Name);
  auto* what =
      LabelFor(quantities_,
               "&Quantities of the coefficients " + names.join(", ").replace('&', "&&") +
                   ", one a line, such as\nhalflife = ln(2)/" + names.value(names.size() - 1).replace('&', "&&"),
               this);
  what->setWordWrap(true);
  quantities_->setPlainText(QString::fromStdString(QuantitiesText(model.Reports)));
  quantities_->setTabChangesFocus(true);
  quantities_->setLineWrapMode(QPlainTextEdit::NoWrap);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &frmQuantities::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* column = new QVBoxLayout(this);
  column->addWidget(what);
  column->addWidget(quantities_, 1);
  column->addWidget(buttons);
  resize(460, 260);
}

void frmQuantities::accept() {
  if (ReportQuantities(editor_, model_, quantities_->toPlainText().toStdString(), user_)) QDialog::accept();
}

}  // namespace quorvex
