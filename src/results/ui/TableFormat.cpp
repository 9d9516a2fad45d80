#include "results/ui/TableFormat.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFontDialog>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>

namespace quorvex {
namespace {

constexpr double kSample = -1234.56789012345;

QComboBox* PatternList(QWidget* parent, const char* name, const std::string& chosen) {
  auto* list = new QComboBox(parent);
  list->setObjectName(name);
  list->setEditable(true);
  list->addItems(
      {"General", "0", "0.00", "0.0000", "0.00000000", "0.0####", "0.0e+0", "0.000000E+00", "0.00000000000000E+00"});
  list->setCurrentText(QString::fromStdString(chosen));
  return list;
}

}  // namespace

TableFormat::TableFormat(QWidget* parent, const NumberPatterns& patterns, const QFont& font, const LocaleText& locale,
                         const QString& residuals)
    : QDialog(parent),
      locale_(locale),
      font_(font),
      values_(PatternList(this, "values", patterns.Values)),
      residuals_(PatternList(this, "residuals", patterns.Residuals)),
      patterns_(patterns),
      allDigits_(new QCheckBox("Full &digits", this)),
      sample_(new QLabel(this)) {
  setObjectName("TableFormat");
  setWindowTitle("Format");
  allDigits_->setObjectName("allDigits");
  allDigits_->setChecked(patterns.Digits == NumberPatterns::kAllDigits);
  allDigits_->setToolTip("Show as many digits as Copy and Save take, of numbers in their usual pattern");
  auto* choose = new QPushButton("&Font...", this);
  choose->setObjectName("font");
  sample_->setObjectName("sample");
  sample_->setTextFormat(Qt::PlainText);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  auto* form = new QFormLayout(this);
  form->addRow("&Values:", values_);
  form->addRow(residuals, residuals_);
  form->addRow(allDigits_);
  form->addRow("Sample:", sample_);
  form->addRow(choose);
  form->addRow(buttons);
  connect(values_, &QComboBox::currentTextChanged, this, &TableFormat::ShowSample);
  connect(residuals_, &QComboBox::currentTextChanged, this, &TableFormat::ShowSample);
  connect(allDigits_, &QCheckBox::toggled, this, &TableFormat::ShowSample);
  connect(choose, &QPushButton::clicked, this, &TableFormat::ChooseFont);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  ShowSample();
}

NumberPatterns TableFormat::Patterns() const {
  NumberPatterns patterns = patterns_;
  patterns.Values = values_->currentText().toStdString();
  patterns.Residuals = residuals_->currentText().toStdString();
  patterns.Digits = allDigits_->isChecked() ? NumberPatterns::kAllDigits : NumberPatterns::kWindowDigits;
  return patterns;
}

void TableFormat::ChooseFont() {
  QFontDialog dialog(font_, this);
  if (dialog.exec() != QDialog::Accepted) return;
  font_ = dialog.selectedFont();
  ShowSample();
}

void TableFormat::ShowSample() {
  const NumberPatterns patterns = Patterns().Shown();
  sample_->setFont(font_);
  sample_->setText(QString::fromStdString(patterns.Text(kSample, patterns.Values, locale_) + "    " +
                                          patterns.Text(kSample, patterns.Residuals, locale_)));
}

}  // namespace quorvex
