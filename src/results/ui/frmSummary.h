#pragma once

#include <QWidget>

#include "core/Prompter.h"
#include "core/Settings.h"
#include "project/Project.h"

class QComboBox;
class QLabel;

namespace quorvex {

class TableBar;
class TableView;

// The window "Summary Results": all solved models of a project, ranked, on one page. It looks into the project, which
// outlives it, as settings and prompter do. Whoever changes the solved models calls Refresh before the user's next
// turn.
class frmSummary : public QWidget {
  Q_OBJECT

 public:
  frmSummary(Project& project, Settings& settings, Prompter& user, QWidget* parent = nullptr);

  // Takes over what the project and the sort index hold now.
  void Refresh();

 signals:
  void SortChosen(int sortIndex);  // which whoever sorts the solved list stores as the setting

 private:
  void Export();

  Project& project_;
  Settings& settings_;
  Prompter& user_;
  QComboBox* cmbSortBy;
  TableView* table_;
  TableBar* commands_;
  QLabel* warnings_;  // what is to be said of the ranking
};

}  // namespace quorvex
