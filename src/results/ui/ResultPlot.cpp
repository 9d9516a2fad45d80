#include "results/ui/ResultPlot.h"

#include <QLabel>
#include <QVBoxLayout>

#include "core/QuietPrompter.h"
#include "core/ui/TabOrder.h"
#include "plot/ui/PlotBar.h"
#include "plot/ui/PlotView.h"

namespace quorvex {

ResultPlot::ResultPlot(const char* name, const QString& accessibleName, Prompter& user, Settings& settings,
                       QWidget* parent)
    : QWidget(parent), user_(user), settings_(settings), reason_(new QLabel(this)) {
  setObjectName(name);
  setAccessibleName(accessibleName);
  reason_->setObjectName("reason");
  reason_->setTextFormat(Qt::PlainText);
  reason_->setAlignment(Qt::AlignCenter);
  reason_->setWordWrap(true);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(reason_, 1);
}

// The view goes before the plot that it shows.
ResultPlot::~ResultPlot() { delete view_; }

void ResultPlot::SetPlot(Result<std::unique_ptr<PlotPage>> plot) {
  const bool focused = view_ != nullptr && view_->hasFocus();
  if (plot_ != nullptr && plot_->Angles()) angles_ = plot_->Angles();
  delete bar_;
  delete view_;
  bar_ = nullptr;
  view_ = nullptr;
  if (plot && angles_) (*plot)->SetAngles(*angles_);
  // The failure stands in the place of the plot.
  QuietPrompter nobody;
  if (plot && !(*plot)->CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}, nobody))
    plot = Failure{kPlotFailure};
  plot_ = plot ? std::move(*plot) : nullptr;
  reason_->setVisible(plot_ == nullptr);
  if (!plot_) return reason_->setText(QString::fromStdString(plot.error()));
  view_ = new PlotView(*plot_, user_, settings_, this);
  view_->setAccessibleName(accessibleName());
  // The others are the window's own commands.
  bar_ = new PlotBar(*view_, view_->LookingActions(), this);
  auto* column = static_cast<QVBoxLayout*>(layout());
  column->addWidget(bar_);
  column->addWidget(view_, 1);
  TabAsLaidOut(*window());
  if (focused) view_->setFocus();
}

}  // namespace quorvex
