#pragma once

#include <QWidget>

#include "core/LocaleText.h"
#include "core/Prompter.h"
#include "core/Settings.h"
#include "results/FitInformation.h"

class QHBoxLayout;
class QPushButton;

namespace quorvex {

class TableView;

// The row of commands below a table that fills a window: copy, export, format, print, page setup.
class TableBar : public QWidget {
  Q_OBJECT

 public:
  // All of it outlives the row, which stands in the window of the table. `residuals` is what the second pattern is for.
  TableBar(TableView& table, const NumberPatterns& patterns, Settings& settings, const LocaleText& locale,
           Prompter& user, QWidget* window, const QString& residuals = "&Residuals:");

  // A further command, behind the others.
  QPushButton* Add(const char* name, const QString& text);

  // Whether the table is short enough to be taken as a whole, as clipboard and printer take it; refused where it is
  // not.
  bool IsShort() const;

  // How the table is to write its numbers, as given until the user has chosen otherwise.
  const NumberPatterns& Patterns() const { return patterns_; }

 signals:
  void ExportChosen();
  void PatternsChosen();

 private:
  void Copy();
  void Format();
  void Print();

  TableView& table_;
  Settings& settings_;
  const LocaleText locale_;
  Prompter& user_;
  NumberPatterns patterns_;
  const QString residuals_;
  QHBoxLayout* row_;
};

}  // namespace quorvex
