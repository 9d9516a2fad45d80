#pragma once

#include <QLabel>

namespace quorvex {

// What the dialogs do with nearly every control.

template <class Control>
Control* Named(Control* control, const char* name) {
  control->setObjectName(name);
  return control;
}

// A label whose letter leads to the control.
inline QLabel* LabelFor(QWidget* control, const QString& text, QWidget* parent = nullptr) {
  auto* label = new QLabel(text, parent);
  label->setBuddy(control);
  return label;
}

}  // namespace quorvex
