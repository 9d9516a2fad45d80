#include "plot/ui/FontButton.h"

#include <QFontDialog>
#include <algorithm>

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
  QFont present(QString::fromStdString(font_.Name));
  present.setPointSizeF(font_.Size);
  present.setBold(font_.Bold);
  present.setItalic(font_.Italic);
  QFontDialog dialog(present, this);
  dialog.setWindowTitle(accessibleName());
  // What the dialog has in place of a font that is not on this machine, or a size between two whole ones, is no choice
  // of the user.
  const QFont offered = dialog.currentFont();
  if (dialog.exec() != QDialog::Accepted) return;
  const QFont chosen = dialog.currentFont();
  PlotFont font = font_;
  if (chosen.family() != offered.family()) font.Name = chosen.family().toStdString();
  if (chosen.pointSizeF() != offered.pointSizeF())
    font.Size = std::clamp<double>(chosen.pointSizeF(), kSmallestFont, kLargestFont);
  font.Bold = chosen.bold();
  font.Italic = chosen.italic();
  if (font == font_) return;
  Show(font);
  emit FontChosen();
}

}  // namespace quorvex
