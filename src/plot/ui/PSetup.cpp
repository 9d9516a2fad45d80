#include "plot/ui/PSetup.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>

namespace quorvex {

PSetup::PSetup(Settings& settings, const LocaleText& locale, Prompter& user, QWidget* parent)
    : QDialog(parent), settings_(settings), locale_(locale), user_(user) {
  setObjectName("PSetup");
  setWindowTitle("Page Setup");
  const PageSetupEntries entries = PageSetupEntries::Read(settings, locale);
  auto* form = new QFormLayout(this);
  const auto field = [&](const char* label, const char* name, const std::string& text) {
    auto* edit = new QLineEdit(QString::fromStdString(text), this);
    edit->setObjectName(name);
    form->addRow(label, edit);
    return edit;
  };
  left_ = field("&Left margin:", "left", entries.Left);
  right_ = field("&Right margin:", "right", entries.Right);
  top_ = field("&Top margin:", "top", entries.Top);
  bottom_ = field("&Bottom margin:", "bottom", entries.Bottom);
  units_ = new QComboBox(this);
  units_->setObjectName("units");
  units_->addItems({"inches", "mm", "cm"});
  units_->setCurrentText(QString::fromStdString(entries.Units));
  form->addRow("&Units:", units_);
  orientation_ = new QComboBox(this);
  orientation_->setObjectName("orientation");
  orientation_->addItems({"Portrait", "Landscape"});
  orientation_->setCurrentIndex(entries.Orientation == 1 ? 0 : 1);
  form->addRow("&Orientation of plots:", orientation_);
  background_ = new QCheckBox("&Print the background of plots", this);
  background_->setObjectName("background");
  background_->setChecked(entries.PrintBackground);
  form->addRow(background_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  form->addRow(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &PSetup::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void PSetup::accept() {
  const PageSetupEntries entries = {left_->text().toStdString(),         right_->text().toStdString(),
                                    top_->text().toStdString(),          bottom_->text().toStdString(),
                                    units_->currentText().toStdString(), background_->isChecked(),
                                    orientation_->currentIndex() + 1};
  if (StorePageSetup(entries, locale_, settings_, user_)) QDialog::accept();
}

}  // namespace quorvex
