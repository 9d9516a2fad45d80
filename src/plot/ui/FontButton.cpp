#include "plot/ui/FontButton.h"

#include <QFontDialog>

namespace quorvex {

FontButton::FontButton(QWidget* parent) : QPushButton(parent) {
  setAutoDefault(false);
  connect(this, &QPushButton::clicked, this, &FontButton::Choose);
}

void FontButton::Show(const PlotFont& font) {
  font_ = font;
  QString text = QString::fromStdString(font.Name) + tr(", %1 pt").arg(font.Size);
  if (font.Bold) text += tr(", bold");
  if (font.Italic) text += tr(", italic");
  setText(QString(text).replace('&', "&&"));
  setAccessibleDescription(text);
}

void FontButton::Choose() {
  QFont shown(QString::fromStdString(font_.Name));
  shown.setPointSizeF(font_.Size);
  shown.setBold(font_.Bold);
  shown.setItalic(font_.Italic);
  bool accepted = false;
  const QFont chosen = QFontDialog::getFont(&accepted, shown, this, accessibleName());
  // The name of a font that is not on this machine stays as long as nobody chooses another.
  if (!accepted || chosen == shown) return;
  const QString name = chosen.family() == shown.family() ? QString::fromStdString(font_.Name) : chosen.family();
  Show({name.toStdString(), chosen.pointSizeF(), chosen.bold(), chosen.italic()});
  emit FontChosen();
}

}  // namespace quorvex
