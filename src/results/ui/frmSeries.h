#pragma once

#include <QWidget>
#include <memory>

#include "core/Prompter.h"
#include "core/Settings.h"
#include "results/SeriesResults.h"

class QCheckBox;
class QComboBox;

namespace quorvex {

class TableBar;
class TableView;

// The window "Series": the answers of all columns, sorted by any of them. It holds what it shows, so the project may
// change; settings and prompter outlive it.
class frmSeries : public QWidget {
  Q_OBJECT

 public:
  frmSeries(SeriesAnswers answers, Settings& settings, const LocaleText& locale, Prompter& user, QWidget* parent);

  Result<PlotClass> Plot(std::size_t quantity, SeriesAxis axis) const {
    return SeriesPlot(*answers_, quantity, axis, settings_, locale_);
  }

 signals:
  void PlotChosen(std::size_t quantity, SeriesAxis axis);

 private:
  void Show();
  void Export();
  void SortBy(int column);

  std::shared_ptr<const SeriesAnswers> answers_;
  Settings& settings_;
  const LocaleText locale_;
  Prompter& user_;
  QComboBox* cmbSortBy;
  QCheckBox* ckDescending;
  QComboBox *cmbPlot, *cmbOver;
  TableView* table_;
  TableBar* commands_;
};

}  // namespace quorvex
