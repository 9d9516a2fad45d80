#pragma once

#include <QDialog>

#include "core/LocaleText.h"
#include "results/FitInformation.h"

class QCheckBox;
class QComboBox;
class QLabel;

namespace quorvex {

// Asks how the tables of a window write their numbers, and in which font.
class TableFormat : public QDialog {
 public:
  // `residuals` is what the second pattern is for.
  TableFormat(QWidget* parent, const NumberPatterns& patterns, const QFont& font, const LocaleText& locale,
              const QString& residuals = "&Residuals:");

  NumberPatterns Patterns() const;
  QFont Font() const { return font_; }

 private:
  void ChooseFont();
  void ShowSample();

  const LocaleText locale_;
  QFont font_;
  QComboBox *values_, *residuals_;
  NumberPatterns patterns_;  // as they were
  QCheckBox* allDigits_;
  QLabel* sample_;
};

}  // namespace quorvex
