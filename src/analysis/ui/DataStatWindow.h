#pragma once

#include <QDialog>
#include <string>
#include <vector>

#include "analysis/DataStat.h"
#include "core/LocaleText.h"
#include "core/Prompter.h"

class QPrinter;
class QTableWidget;
class QTabWidget;

namespace quorvex {

// The window of the Statistics command: the statistics as they were when it was opened, and the correlations. It stays
// open beside the sheet and deletes itself when it is closed.
class DataStatWindow : public QDialog {
 public:
  // The prompter outlives the window.
  DataStatWindow(QWidget* parent, DataStat statistics, const LocaleText& locale, Prompter& user);

  // The grid in front as a table on paper.
  void Print(QPrinter& printer) const;

 private:
  // A grid and the pattern of its numbers. Of the correlations each row is named at its head.
  struct Page {
    const char *Name, *Tab, *Title;
    std::vector<std::vector<std::string>> (*Rows)(const DataStat&, const LocaleText&, const std::string&);
    bool NamedRows;
    std::string NumberFormat = "General";
    QTableWidget* Grid = nullptr;
  };

  void Fill(Page& page);
  const Page& Front() const;
  std::vector<std::vector<std::string>> FrontRows() const;

  void Copy() const;
  void Export() const;
  void Format();
  void ChoosePrinter() const;

  const DataStat statistics_;
  const LocaleText locale_;
  Prompter& user_;
  std::vector<Page> pages_;
  QTabWidget* tabs_;
};

}  // namespace quorvex
