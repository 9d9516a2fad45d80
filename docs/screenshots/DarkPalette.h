#pragma once

#include <QPalette>

namespace quorvex {

// The colours of a dark desktop, for pictures.
inline QPalette DarkPalette() {
  QPalette palette(QColor(53, 53, 53), QColor(42, 42, 42));
  palette.setColor(QPalette::Window, QColor(45, 45, 45));
  palette.setColor(QPalette::WindowText, Qt::white);
  palette.setColor(QPalette::Base, QColor(30, 30, 30));
  palette.setColor(QPalette::Text, Qt::white);
  palette.setColor(QPalette::ButtonText, Qt::white);
  palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, QColor(130, 130, 130));
  return palette;
}

}  // namespace quorvex
