#include "plot/ui/PlotWindow.h"

#include <QToolBar>
#include <QVBoxLayout>

namespace quorvex {

PlotWindow::PlotWindow(PlotClass plot, Prompter& prompter, const Settings& settings, QWidget* parent)
    : QWidget(parent), plot_(std::move(plot)), view_(new PlotView(plot_, prompter, settings, this)) {
  setWindowTitle(tr("Plot"));
  auto* bar = new QToolBar(this);
  bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
  bar->addActions(view_->actions());
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins({});
  rows->setSpacing(0);
  rows->addWidget(bar);
  rows->addWidget(view_, 1);
  setFocusProxy(view_);
}

}  // namespace quorvex
