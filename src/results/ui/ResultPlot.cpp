#include "results/ui/ResultPlot.h"

#include <QAction>
#include <QLabel>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "plot/ui/PlotView.h"

namespace quorvex {

ResultPlot::ResultPlot(const char* name, const QString& accessibleName, Prompter& user, const Settings& settings,
                       QWidget* parent)
    : QWidget(parent), user_(user), settings_(settings), tools_(new QToolBar(this)), reason_(new QLabel(this)) {
  setObjectName(name);
  setAccessibleName(accessibleName);
  tools_->setToolButtonStyle(Qt::ToolButtonTextOnly);
  // The button for what a narrow bar has no room for.
  tools_->findChild<QToolButton*>("qt_toolbar_ext_button")->setAccessibleName("More commands");
  reason_->setObjectName("reason");
  reason_->setTextFormat(Qt::PlainText);
  reason_->setAlignment(Qt::AlignCenter);
  reason_->setWordWrap(true);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(tools_);
  column->addWidget(reason_, 1);
}

// The view goes before the plot that it shows.
ResultPlot::~ResultPlot() { delete view_; }

void ResultPlot::SetPlot(Result<PlotClass> plot) {
  tools_->clear();
  delete view_;
  view_ = nullptr;
  plot_ = plot ? std::make_unique<PlotClass>(std::move(*plot)) : nullptr;
  tools_->setVisible(plot_ != nullptr);
  reason_->setVisible(plot_ == nullptr);
  if (!plot_) return reason_->setText(QString::fromStdString(plot.error()));
  plot_->CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}, user_);
  view_ = new PlotView(*plot_, user_, settings_, this);
  view_->setAccessibleName(accessibleName());
  // The others are the window's own commands.
  for (QAction* action : view_->actions().first(3)) tools_->addAction(action);
  static_cast<QVBoxLayout*>(layout())->addWidget(view_, 1);
}

}  // namespace quorvex
