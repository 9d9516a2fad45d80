#pragma once

#include <QDialog>
#include <QTimer>
#include <functional>
#include <vector>

#include "core/Prompter.h"
#include "core/Settings.h"
#include "plot/PlotEntries.h"

class QAbstractButton;
class QBoxLayout;
class QCheckBox;
class QTabWidget;

namespace quorvex {

class FieldPanel;
class SeriesPanel;

// What a window with a plot does while its properties are edited.
struct PlotWatcher {
  std::function<void()> Redraw;                         // the plot looks different, perhaps only for a while
  std::function<void(const PlotPage& before)> Applied;  // changes are made to last; there is something to save
};

// The properties of a plot, in a tabbed dialog: each field of the plot has a control. Nothing reaches the plot until
// Apply or OK passes the checks, but for previews, which Cancel takes back.
class PlotProperties : public QDialog {
  Q_OBJECT

 public:
  // Plot, settings and prompter must outlive the dialog.
  PlotProperties(PlotPage& plot, Settings& settings, Prompter& prompter, PlotWatcher watcher, QWidget* parent);

  void accept() override;
  void reject() override;

 private:
  void AddPage(std::size_t page);
  void AddColumns(QBoxLayout& rows, std::size_t page);
  void AddGroup(QBoxLayout& column, std::size_t page, std::size_t group);
  QBoxLayout* MakeCodeButtons(const QString& name, QWidget* page);
  QBoxLayout* MakeCommands();
  void ApplyCode(int kind);
  void EditGroup(FieldGroup& group);
  void CalcScale();
  void SaveDefaults();

  bool Passes();  // else says why, and goes there
  bool Apply();
  void GoTo(const PlotEntries::Refusal& refusal);
  void Edited();
  void Preview();
  void TakeBack();
  void ShowEntries();

  PlotPage& plot_;
  Settings& settings_;
  Prompter& prompter_;
  PlotWatcher watcher_;
  PlotEntries entries_;
  bool previewed_ = false;  // the plot shows entries that were not applied
  QTimer soon_;             // until the preview, once for all that is edited in a moment

  struct Panel {
    FieldPanel* Form;
    std::size_t Page, Group;
  };
  std::vector<Panel> panels_;
  SeriesPanel* series_ = nullptr;
  QTabWidget* pages_;
  QCheckBox* preview_;
  QAbstractButton* apply_;
};

// Lets the user edit them, and returns when that is over.
void EditProperties(PlotPage& plot, Settings& settings, Prompter& prompter, PlotWatcher watcher, QWidget* parent);

}  // namespace quorvex
