#pragma once

#include <QWidget>
#include <memory>

#include "core/Prompter.h"
#include "core/Result.h"
#include "plot/PlotPage.h"

class QLabel;

namespace quorvex {

class PlotBar;
class PlotView;

// A plot of a results window with its tools, or why there is none. Once the user has turned a plot, those after it are
// seen from there, too.
class ResultPlot : public QWidget {
 public:
  ResultPlot(const char* name, const QString& accessibleName, Prompter& user, Settings& settings, QWidget* parent);
  ~ResultPlot() override;

  void SetPlot(Result<std::unique_ptr<PlotPage>> plot);
  PlotView* View() const { return view_; }  // null where there is no plot

 private:
  Prompter& user_;
  Settings& settings_;
  std::unique_ptr<PlotPage> plot_;
  std::optional<ViewAngles> angles_;  // of the last plot that had any
  PlotBar* bar_ = nullptr;
  PlotView* view_ = nullptr;
  QLabel* reason_;
};

}  // namespace quorvex
