#pragma once

#include <QObject>
#include <functional>

#include "plot/PropertyField.h"

class QWidget;

namespace quorvex {

// The control of a plot's field, named as that is.
class FieldControl : public QObject {
  Q_OBJECT

 public:
  FieldControl(const PropertyField& field, const LocaleText& locale, QWidget* parent);

  QWidget* Widget() const { return widget_; }  // all of it
  QWidget* Focus() const { return focus_; }    // the part that a label leads to
  FieldValue Value() const { return value_(); }
  void Show(const FieldValue& value);
  void GoTo();  // with its text selected

 signals:
  void Edited();  // by the user

 private:
  template <typename Control>
  Control* Take(Control* control);
  void MakeLine(const PropertyField& field, const LocaleText& locale, QWidget* parent);
  void MakeLines(QWidget* parent);
  void MakeFlag(const PropertyField& field, QWidget* parent);
  void MakeChoices(const PropertyField& field, QWidget* parent);
  void MakePattern(QWidget* parent);
  void MakeColor(QWidget* parent);
  void MakeFont(const PropertyField& field, QWidget* parent);

  QWidget *widget_ = nullptr, *focus_ = nullptr;
  std::function<FieldValue()> value_;
  std::function<void(const FieldValue&)> show_;
};

}  // namespace quorvex
