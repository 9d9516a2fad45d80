#include "core/ui/ColorButton.h"

#include <QColorDialog>
#include <QPainter>
#include <QStyle>

namespace quorvex {
namespace {

QColor FromStored(std::int32_t color) { return {color & 0xFF, color >> 8 & 0xFF, color >> 16 & 0xFF}; }

}  // namespace

ColorButton::ColorButton(QWidget* parent) : QPushButton(parent) {
  setAutoDefault(false);
  setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
  connect(this, &QPushButton::clicked, this, &ColorButton::Choose);
  SetColor(0);
}

void ColorButton::SetColor(std::int32_t color) {
  color_ = color;
  const QColor shown = FromStored(color);
  const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
  QPixmap swatch(QSize(2 * side, side) * devicePixelRatioF());
  swatch.setDevicePixelRatio(devicePixelRatioF());
  QPainter painter(&swatch);
  painter.fillRect(0, 0, 2 * side, side, shown);
  painter.setPen(palette().color(QPalette::ButtonText));
  painter.drawRect(0, 0, 2 * side - 1, side - 1);
  painter.end();
  setIconSize({2 * side, side});
  setIcon(swatch);
  setText(shown.name());
  setAccessibleDescription(shown.name());
}

void ColorButton::Choose() {
  const QColor chosen = QColorDialog::getColor(FromStored(color_), this, accessibleName());
  if (!chosen.isValid()) return;
  SetColor(chosen.red() | chosen.green() << 8 | chosen.blue() << 16);
  emit Chosen();
}

}  // namespace quorvex
