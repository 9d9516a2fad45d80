#pragma once

#include <QWidget>

namespace quorvex {

class PlotView;

// The row over a plot: buttons, and the angles from which it is seen where it has three dimensions.
class PlotBar : public QWidget {
 public:
  PlotBar(PlotView& view, const QList<QAction*>& buttons, QWidget* parent);
};

}  // namespace quorvex
