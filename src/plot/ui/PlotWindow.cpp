#include "plot/ui/PlotWindow.h"

#include <QAction>
#include <QActionGroup>
#include <QMenuBar>
#include <QVBoxLayout>

#include "plot/ui/PlotBar.h"

namespace quorvex {

PlotWindow::PlotWindow(std::unique_ptr<PlotPage> plot, Prompter& prompter, const Settings& settings, QWidget* parent)
    : QWidget(parent, Qt::Window),
      plot_(std::move(plot)),
      prompter_(prompter),
      view_(new PlotView(*plot_, prompter, settings, this)) {
  setObjectName("PlotWindow");
  setWindowTitle(tr("Plot"));
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins({});
  rows->setSpacing(0);
  rows->addWidget(new PlotBar(*view_, view_->actions(), this));
  rows->addWidget(view_, 1);
  setFocusProxy(view_);
  MakeMenus();
}

// The view goes before the plot that it shows.
PlotWindow::~PlotWindow() { delete view_; }

void PlotWindow::MakeMenus() {
  auto* menus = new QMenuBar(this);
  layout()->setMenuBar(menus);
  QMenu* plot = menus->addMenu(tr("&Plot"));
  plot->addActions(view_->OutputActions());
  constexpr QKeySequence::StandardKey kKeys[] = {QKeySequence::Copy, QKeySequence::Save, QKeySequence::Print};
  for (qsizetype i = 0; const QKeySequence::StandardKey key : kKeys) plot->actions()[i++]->setShortcut(key);
  plot->addSeparator();
  QAction* close = plot->addAction(tr("C&lose"), QKeySequence("Ctrl+W"), this, &QWidget::close);
  close->setObjectName("mnuPlotClose");

  QMenu* view = menus->addMenu(tr("&View"));
  view->addActions(view_->LookingActions());
  view->addSeparator();
  AddSwitches(*view);
  connect(view_, &PlotView::Changed, this, &PlotWindow::ShowSwitches);
  ShowSwitches();
}

void PlotWindow::AddSwitches(QMenu& menu) {
  QMenu* choices = nullptr;  // the menu of the entries of which one is on
  QActionGroup* oneOf = nullptr;
  for (const PlotSwitch& entry : plot_->Switches()) {
    if (entry.Name == nullptr) {
      menu.addSeparator();
      continue;
    }
    if (entry.Applies != nullptr && !entry.Applies(*plot_)) continue;
    if (entry.Menu != nullptr && (choices == nullptr || choices->title() != entry.Menu)) {
      choices = menu.addMenu(tr(entry.Menu));
      oneOf = new QActionGroup(choices);
    }
    QAction* action = (entry.Menu != nullptr ? choices : &menu)->addAction(tr(entry.Text));
    action->setObjectName(entry.Name);
    action->setCheckable(entry.IsOn != nullptr);
    if (entry.Menu != nullptr) oneOf->addAction(action);
    connect(action, &QAction::triggered, this, [this, &entry](bool on) {
      entry.Turn(*plot_, on, prompter_);
      view_->Redraw();
      emit view_->Changed();
    });
    connect(view_, &PlotView::MenuEnabled, action, &QAction::setEnabled);
    if (entry.IsOn != nullptr) switches_.emplace_back(&entry, action);
  }
}

void PlotWindow::ShowSwitches() {
  for (const auto& [entry, action] : switches_) {
    action->setChecked(entry->IsOn(*plot_));
    if (entry->Matters != nullptr) action->setEnabled(entry->Matters(*plot_));
  }
}

}  // namespace quorvex
