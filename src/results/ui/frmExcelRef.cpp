#include "results/ui/frmExcelRef.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

#include "core/ui/SystemClipboard.h"
#include "results/EquationExport.h"

namespace quorvex {

frmExcelRef::frmExcelRef(QWidget* parent, const ModelClass& model)
    : QDialog(parent),
      model_(model),
      user_(this),
      txtColumn(new QLineEdit("A", this)),
      txtRow(new QLineEdit("1", this)) {
  const bool several = model.NumIndependentVar() > 1;
  setObjectName("frmExcelRef");
  setWindowTitle("Spreadsheet Formula");
  txtColumn->setObjectName("txtColumn");
  txtRow->setObjectName("txtRow");
  auto* what = new QLabel(several ? "Please enter the first column and row that contains the independent variable X1."
                                  : "Please enter the first column and row that contains the independent variable X.",
                          this);
  what->setWordWrap(true);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &frmExcelRef::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* rows = new QFormLayout(this);
  rows->addRow(what);
  rows->addRow("&Column:", txtColumn);
  rows->addRow("&Row:", txtRow);
  if (several) {
    optColumns = new QRadioButton("The variables are in &neighbouring columns", this);
    auto* optRows = new QRadioButton("The variables are in neighbouring r&ows", this);
    optColumns->setObjectName("optColumns");
    optRows->setObjectName("optRows");
    optColumns->setChecked(true);
    rows->addRow(optColumns);
    rows->addRow(optRows);
  }
  if (const std::string notes = ExcelNotes(model); !notes.empty()) {
    auto* lblNotes = new QLabel(QString::fromStdString(notes), this);
    lblNotes->setObjectName("lblNotes");
    lblNotes->setTextFormat(Qt::PlainText);
    lblNotes->setWordWrap(true);
    rows->addRow(lblNotes);
  }
  rows->addRow(buttons);
  setMinimumWidth(400);
}

void frmExcelRef::accept() {
  SystemClipboard clipboard;
  if (CopyExcelFormula(model_, txtColumn->text().toStdString(), txtRow->text().toStdString(),
                       optColumns == nullptr || optColumns->isChecked(), clipboard, user_))
    QDialog::accept();
}

}  // namespace quorvex
