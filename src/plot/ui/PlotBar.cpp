#include "plot/ui/PlotBar.h"

#include <QHBoxLayout>
#include <QToolBar>
#include <QToolButton>

#include "plot/ui/AngleBoxes.h"
#include "plot/ui/PlotView.h"

namespace quorvex {

PlotBar::PlotBar(PlotView& view, const QList<QAction*>& buttons, QWidget* parent) : QWidget(parent) {
  auto* tools = new QToolBar(this);
  tools->setToolButtonStyle(Qt::ToolButtonTextOnly);
  // The button for what a narrow bar has no room for.
  tools->findChild<QToolButton*>("qt_toolbar_ext_button")->setAccessibleName(tr("More commands"));
  tools->addActions(buttons);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins({});
  row->addWidget(tools, 1);
  if (view.Angles()) row->addWidget(new AngleBoxes(view, this));
}

}  // namespace quorvex
