#include "plot/ui/PlotWindow.h"

#include <QAction>
#include <QMenuBar>
#include <QToolBar>
#include <QVBoxLayout>

namespace quorvex {

PlotWindow::PlotWindow(PlotClass plot, Prompter& prompter, const Settings& settings, QWidget* parent)
    : QWidget(parent, Qt::Window),
      plot_(std::move(plot)),
      prompter_(prompter),
      view_(new PlotView(plot_, prompter, settings, this)) {
  setObjectName("PlotWindow");
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
  MakeMenus();
}

// The view goes before the plot that it shows.
PlotWindow::~PlotWindow() { delete view_; }

void PlotWindow::MakeMenus() {
  auto* menus = new QMenuBar(this);
  layout()->setMenuBar(menus);
  constexpr qsizetype kLooking = 3;  // the first of the view's actions are for that, the others put the plot elsewhere
  QMenu* plot = menus->addMenu(tr("&Plot"));
  plot->addActions(view_->actions().mid(kLooking));
  constexpr QKeySequence::StandardKey kKeys[] = {QKeySequence::Copy, QKeySequence::Save, QKeySequence::Print};
  for (qsizetype i = 0; const QKeySequence::StandardKey key : kKeys) plot->actions()[i++]->setShortcut(key);
  plot->addSeparator();
  QAction* close = plot->addAction(tr("C&lose"), QKeySequence("Ctrl+W"), this, &QWidget::close);
  close->setObjectName("mnuPlotClose");

  QMenu* view = menus->addMenu(tr("&View"));
  view->addActions(view_->actions().first(kLooking));
  view->addSeparator();
  for (const PlotSwitch& entry : PlotSwitches()) {
    if (entry.Name == nullptr) {
      view->addSeparator();
      continue;
    }
    if (entry.Applies != nullptr && !entry.Applies(plot_)) continue;
    QAction* action = view->addAction(tr(entry.Text));
    action->setObjectName(entry.Name);
    action->setCheckable(true);
    connect(action, &QAction::triggered, this, [this, &entry](bool on) {
      entry.Turn(plot_, on, prompter_);
      view_->Redraw();
      ShowSwitches();
    });
    connect(view_, &PlotView::MenuEnabled, action, &QAction::setEnabled);
    switches_.emplace_back(&entry, action);
  }
  connect(view_, &PlotView::Changed, this, &PlotWindow::ShowSwitches);
  ShowSwitches();
}

void PlotWindow::ShowSwitches() {
  for (const auto& [entry, action] : switches_) action->setChecked(entry->IsOn(plot_));
}

}  // namespace quorvex
