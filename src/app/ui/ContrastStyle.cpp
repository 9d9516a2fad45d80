#include "app/ui/ContrastStyle.h"

#include <QPainter>
#include <QStyleOption>
#include <algorithm>
#include <cmath>

namespace quorvex {
namespace {

double Luminance(const QColor& color) {
  const auto linear = [](float part) {
    return part <= 0.03928F ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

// As little ink in the window's colour as stands out from it, and from what fields are filled with.
QColor EdgeColor(const QPalette& palette, double ratio) {
  constexpr float kSteps = 50;
  const QColor window = palette.color(QPalette::Window), base = palette.color(QPalette::Base);
  const QColor ink = palette.color(QPalette::WindowText);
  QColor edge = ink;
  for (float step = kSteps; step >= 0; --step) {
    const auto mixed = [&](float from, float to) { return from + (to - from) * step / kSteps; };
    const QColor lighter = QColor::fromRgbF(mixed(window.redF(), ink.redF()), mixed(window.greenF(), ink.greenF()),
                                            mixed(window.blueF(), ink.blueF()));
    if (std::min(ContrastRatio(lighter, window), ContrastRatio(lighter, base)) < ratio) break;
    edge = lighter;
  }
  return edge;
}

void SetEdge(QPainter& painter, const QStyleOption& option, double ratio = 3.2) {
  painter.setPen(QPen(EdgeColor(option.palette, ratio), 1));
  painter.setBrush(Qt::NoBrush);
}

}  // namespace

double ContrastRatio(const QColor& a, const QColor& b) {
  const double one = Luminance(a) + 0.05, other = Luminance(b) + 0.05;
  return std::max(one, other) / std::min(one, other);
}

void ContrastStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                  const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  const bool box = element == PE_IndicatorCheckBox, button = element == PE_IndicatorRadioButton;
  // What has the keyboard has an edge in the colour for that.
  const bool marked = option->state.testFlag(State_HasFocus) && option->state.testFlag(State_KeyboardFocusChange);
  if ((!box && !button) || !option->state.testFlag(State_Enabled) || marked) return;
  painter->save();
  SetEdge(*painter, *option);
  if (box) {
    painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
  } else {
    SetEdge(*painter, *option, 5);  // half of which goes where a round edge is smoothed
    painter->setRenderHint(QPainter::Antialiasing);
    painter->drawEllipse(QRectF(option->rect).adjusted(1, 1, -1, -1));
  }
  painter->restore();
}

void ContrastStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                       const QWidget* widget) const {
  QProxyStyle::drawComplexControl(control, option, painter, widget);
  const auto* group = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
  if (control != CC_GroupBox || group == nullptr || !group->subControls.testFlag(SC_GroupBoxFrame) ||
      group->features.testFlag(QStyleOptionFrame::Flat))
    return;
  painter->save();
  SetEdge(*painter, *option);
  painter->drawRect(proxy()->subControlRect(control, option, SC_GroupBoxContents, widget).adjusted(-2, -2, 1, 1));
  painter->restore();
}

}  // namespace quorvex
