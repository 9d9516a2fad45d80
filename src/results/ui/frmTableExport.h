#pragma once

#include <QWidget>

#include "core/Prompter.h"
#include "core/Settings.h"
#include "results/ExportTable.h"

namespace quorvex {

class TableBar;
class TableView;

// The window "Data Table Export": a table of values of equations, to be put into a sheet or a file. It keeps what it
// was opened with. Settings, locale and prompter outlive it.
class frmTableExport : public QWidget {
  Q_OBJECT

 public:
  frmTableExport(const ExportTable& table, Settings& settings, const LocaleText& locale, Prompter& user,
                 QWidget* parent = nullptr);

 signals:
  // The numbers that are wanted in a sheet, with tabs between them: the selected cells where there are several, else
  // all of them.
  void SheetChosen(const std::string& tabSeparated);

 private:
  void ToSheet();
  void Export();
  void Show();

  ExportTable values_;  // in full
  Prompter& user_;
  TableView* table_;
  TableBar* commands_;
};

}  // namespace quorvex
