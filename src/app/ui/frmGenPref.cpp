#include "app/ui/frmGenPref.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QFontComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QListWidget>
#include <QTabWidget>

#include "core/ui/ColorButton.h"

namespace quorvex {

frmGenPref::frmGenPref(QWidget* parent, Session& session, Prompter& user)
    : PreferenceDialog(parent, "Preferences", GeneralPreferences(), session, user) {
  setObjectName("frmGenPref");
  for (const FontPreference& font : FontPreferences()) fonts_.push_back(ReadFontChoice(font, session_.Preferences));
  Pages().addTab(FontPage(), "F&onts");
  lstFonts->setCurrentRow(0);
}

QWidget* frmGenPref::FontPage() {
  auto* page = new QWidget(&Pages());
  lstFonts = new QListWidget(page);
  ckOfPlot = new QCheckBox("The plot's o&wn font", page);
  cmbFontName = new QFontComboBox(page);
  txtFontSize = new QDoubleSpinBox(page);
  ckBold = new QCheckBox("&Bold", page);
  ckItalic = new QCheckBox("&Italic", page);
  cmdFontColor = new ColorButton(page);
  sample_ = new QLabel("Sample 0.05", page);

  for (const FontPreference& font : FontPreferences())
    lstFonts->addItem(QString::fromUtf8(font.Label.data(), static_cast<qsizetype>(font.Label.size())));
  lstFonts->setObjectName("lstFonts");
  lstFonts->setAccessibleName("Fonts of new plots");
  ckOfPlot->setObjectName("ckOfPlot");
  cmbFontName->setObjectName("cmbFontName");
  cmbFontName->setAccessibleName("Font");
  txtFontSize->setObjectName("txtFontSize");
  txtFontSize->setAccessibleName("Size in points");
  txtFontSize->setRange(kLeastFontSize, kMostFontSize);
  txtFontSize->setDecimals(1);
  ckBold->setObjectName("ckBold");
  ckItalic->setObjectName("ckItalic");
  cmdFontColor->setObjectName("cmdFontColor");
  cmdFontColor->setAccessibleName("Font colour");
  sample_->setObjectName("sampleFont");
  sample_->setMinimumHeight(48);

  auto* what = new QLabel("&Text of the plot:", page);
  what->setBuddy(lstFonts);
  auto* list = new QVBoxLayout;
  list->addWidget(what);
  list->addWidget(lstFonts);
  auto* form = new QFormLayout;
  form->addRow(ckOfPlot);
  form->addRow("Na&me:", cmbFontName);
  form->addRow("Si&ze (points):", txtFontSize);
  form->addRow(ckBold);
  form->addRow(ckItalic);
  form->addRow("&Colour:", cmdFontColor);
  form->addRow(sample_);
  auto* both = new QHBoxLayout(page);
  both->addLayout(list);
  both->addLayout(form, 1);

  connect(lstFonts, &QListWidget::currentRowChanged, this, &frmGenPref::ShowFont);
  connect(cmbFontName, &QFontComboBox::currentFontChanged, this, &frmGenPref::FontEdited);
  connect(txtFontSize, &QDoubleSpinBox::valueChanged, this, &frmGenPref::FontEdited);
  for (QCheckBox* box : {ckOfPlot, ckBold, ckItalic}) connect(box, &QCheckBox::toggled, this, &frmGenPref::FontEdited);
  connect(cmdFontColor, &ColorButton::Chosen, this, &frmGenPref::FontEdited);
  return page;
}

FontChoice& frmGenPref::Chosen() { return fonts_[static_cast<std::size_t>(lstFonts->currentRow())]; }

void frmGenPref::ShowFont() {
  const FontChoice& font = Chosen();
  showing_ = true;
  ckOfPlot->setChecked(font.OfPlot);
  cmbFontName->setCurrentFont(QFont(QString::fromStdString(font.Name)));
  txtFontSize->setValue(font.Size);
  ckBold->setChecked(font.Bold);
  ckItalic->setChecked(font.Italic);
  cmdFontColor->SetColor(font.Color);
  showing_ = false;
  for (QWidget* control : std::initializer_list<QWidget*>{cmbFontName, txtFontSize, ckBold, ckItalic, cmdFontColor})
    control->setEnabled(!font.OfPlot);
  sample_->setVisible(!font.OfPlot);
  QFont shown(QString::fromStdString(font.Name));
  shown.setPointSizeF(font.Size);
  shown.setBold(font.Bold);
  shown.setItalic(font.Italic);
  sample_->setFont(shown);
}

void frmGenPref::FontEdited() {
  if (showing_) return;
  FontChoice& font = Chosen();
  font.OfPlot = ckOfPlot->isChecked();
  // The name of a font that is not on this machine stays as long as nobody chooses another.
  if (const QFont named(QString::fromStdString(font.Name)); cmbFontName->currentFont().family() != named.family())
    font.Name = cmbFontName->currentFont().family().toStdString();
  font.Size = txtFontSize->value();
  font.Bold = ckBold->isChecked();
  font.Italic = ckItalic->isChecked();
  font.Color = cmdFontColor->Color();
  ShowFont();
}

int frmGenPref::StoreMore() { return StoreFontChoices(fonts_, session_.Preferences); }

void frmGenPref::RestoreMore() {
  fonts_.assign(fonts_.size(), FontChoice());
  ShowFont();
}

}  // namespace quorvex
