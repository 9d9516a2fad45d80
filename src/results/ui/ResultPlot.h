#pragma once

#include <QWidget>
#include <memory>

#include "core/Prompter.h"
#include "core/Result.h"
#include "plot/PlotClass.h"

class QLabel;
class QToolBar;

namespace quorvex {

class PlotView;

// A plot of a results window with its tools, or why there is none.
class ResultPlot : public QWidget {
 public:
  ResultPlot(const char* name, const QString& accessibleName, Prompter& user, const Settings& settings,
             QWidget* parent);
  ~ResultPlot() override;

  void SetPlot(Result<PlotClass> plot);
  PlotView* View() const { return view_; }  // null where there is no plot

 private:
  Prompter& user_;
  const Settings& settings_;
  std::unique_ptr<PlotClass> plot_;
  PlotView* view_ = nullptr;
  QToolBar* tools_;
  QLabel* reason_;
};

}  // namespace quorvex
