#pragma once

#include <QWidget>

#include "plot/ui/PlotView.h"

namespace quorvex {

// A window with one plot and the buttons for what can be done with it.
class PlotWindow : public QWidget {
  Q_OBJECT

 public:
  // Prompter and settings must outlive the window.
  PlotWindow(PlotClass plot, Prompter& prompter, const Settings& settings, QWidget* parent = nullptr);

  PlotClass& Plot() { return plot_; }
  PlotView& View() { return *view_; }

 private:
  PlotClass plot_;
  PlotView* view_;
};

}  // namespace quorvex
