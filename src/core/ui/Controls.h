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

// The same for a box of choices that explain themselves to the eye: a screen reader calls a box by its choice, and what
// it is for by its label alone, which is not shown.
inline void NameAloud(QWidget* box, const QString& text) {
  box->setAccessibleName(text);
  LabelFor(box, text, box->parentWidget())->hide();
}

}  // namespace quorvex
