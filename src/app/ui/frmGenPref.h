#pragma once

#include <vector>

#include "app/ui/PreferenceDialog.h"

class QCheckBox;
class QDoubleSpinBox;
class QFontComboBox;
class QLabel;
class QListWidget;

namespace quorvex {

class ColorButton;

// The general preferences: new projects, the solve setup, what new plots begin with, and paper.
class frmGenPref : public PreferenceDialog {
  Q_OBJECT

 public:
  frmGenPref(QWidget* parent, Session& session, Prompter& user);

 protected:
  int StoreMore() override;
  void RestoreMore() override;

 private:
  QWidget* FontPage();
  FontChoice& Chosen();
  void ShowFont();    // of the chosen row
  void FontEdited();  // takes what the controls say

  std::vector<FontChoice> fonts_;  // one for each of FontPreferences()
  bool showing_ = false;           // a font, which is then no edit
  QListWidget* lstFonts;
  QCheckBox* ckOfPlot;
  QFontComboBox* cmbFontName;
  QDoubleSpinBox* txtFontSize;
  QCheckBox *ckBold, *ckItalic;
  ColorButton* cmdFontColor;
  QLabel* sample_;
};

}  // namespace quorvex
