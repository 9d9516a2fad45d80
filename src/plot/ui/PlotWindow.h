#pragma once

#include <QWidget>
#include <memory>
#include <utility>
#include <vector>

#include "plot/PlotSwitches.h"
#include "plot/ui/PlotView.h"

class QMenu;

namespace quorvex {

// A window with one plot, the menus and buttons for what can be done with it, and switches for how it looks.
class PlotWindow : public QWidget {
  Q_OBJECT

 public:
  // Prompter and settings must outlive the window.
  PlotWindow(std::unique_ptr<PlotPage> plot, Prompter& prompter, const Settings& settings, QWidget* parent = nullptr);
  ~PlotWindow() override;

  PlotPage& Plot() { return *plot_; }
  PlotView& View() { return *view_; }

 private:
  void MakeMenus();
  void AddSwitches(QMenu& menu);
  void ShowSwitches();  // as the plot has them now

  std::unique_ptr<PlotPage> plot_;
  Prompter& prompter_;
  PlotView* view_;
  std::vector<std::pair<const PlotSwitch*, QAction*>> switches_;
};

}  // namespace quorvex
