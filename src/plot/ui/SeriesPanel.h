#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "plot/PropertyField.h"

class QListWidget;

namespace quorvex {

class FieldPanel;

// The series of a plot and the fields of one of them.
class SeriesPanel : public QWidget {
  Q_OBJECT

 public:
  // There must be one series at least, and the vector must outlive the panel.
  SeriesPanel(std::vector<FieldGroup>& series, const LocaleText& locale, QWidget* parent);

  void ShowEntries();
  void GoTo(std::size_t series, const std::string& control);

 signals:
  void Edited();

 private:
  void ShowNames();
  std::size_t Chosen() const;

  std::vector<FieldGroup>& series_;
  QListWidget* GraphList;
  FieldPanel* panel_;
};

}  // namespace quorvex
