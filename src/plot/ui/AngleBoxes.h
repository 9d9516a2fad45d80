#pragma once

#include <QWidget>

class QSpinBox;

namespace quorvex {

class PlotView;

// The two angles from which a plot of three dimensions is seen, in whole degrees: to be read while mouse or keys turn
// it, and to be set.
class AngleBoxes : public QWidget {
 public:
  // Of a view whose plot can be turned, and which outlives the boxes.
  AngleBoxes(PlotView& view, QWidget* parent);

 private:
  void ShowAngles();

  PlotView& view_;
  QSpinBox *XYAngle, *ZAngle;
};

}  // namespace quorvex
