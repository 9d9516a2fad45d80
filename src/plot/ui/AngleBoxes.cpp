#include "plot/ui/AngleBoxes.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>

#include "plot/ui/PlotView.h"

namespace quorvex {
namespace {

QSpinBox* Box(const char* name, const QString& accessibleName, const QString& caption, int most, QWidget& parent) {
  auto* box = new QSpinBox(&parent);
  box->setObjectName(name);
  box->setAccessibleName(accessibleName);
  box->setToolTip(accessibleName);
  box->setRange(0, most);
  box->setSuffix(QString::fromUtf8("\u00B0"));
  auto* label = new QLabel(caption, &parent);
  label->setBuddy(box);
  parent.layout()->addWidget(label);
  parent.layout()->addWidget(box);
  return box;
}

}  // namespace

AngleBoxes::AngleBoxes(PlotView& view, QWidget* parent) : QWidget(parent), view_(view) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(6, 0, 6, 0);
  XYAngle = Box("XYAngle", tr("X1-X2 view angle"), tr("X&1-X2:"), 360, *this);
  XYAngle->setWrapping(true);
  ZAngle = Box("ZAngle", tr("X1-Y view angle"), tr("&X1-Y:"), 180, *this);
  setTabOrder(ZAngle, &view);  // as they stand over it
  ShowAngles();
  connect(XYAngle, &QSpinBox::valueChanged, &view, &PlotView::SetXYAngle);
  connect(ZAngle, &QSpinBox::valueChanged, &view, &PlotView::SetZAngle);
  connect(&view, &PlotView::Changed, this, &AngleBoxes::ShowAngles);
  connect(&view, &PlotView::Redrawn, this, &AngleBoxes::ShowAngles);
}

void AngleBoxes::ShowAngles() {
  const QSignalBlocker quietXY(XYAngle), quietZ(ZAngle);
  XYAngle->setValue(qRound(view_.Angles()->XY));
  ZAngle->setValue(qRound(view_.Angles()->Z));
}

}  // namespace quorvex
