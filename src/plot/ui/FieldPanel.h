#pragma once

#include <QGroupBox>
#include <vector>

#include "plot/PropertyField.h"

namespace quorvex {

class FieldControl;

// The controls of a group of fields, row by row. What the user edits is entered at once.
class FieldPanel : public QGroupBox {
  Q_OBJECT

 public:
  // The group must outlive the panel, or another one like it take its place.
  FieldPanel(FieldGroup& group, const LocaleText& locale, QWidget* parent);

  void Bind(FieldGroup& group);
  void ShowEntries();
  bool GoTo(const std::string& control);  // false where it has no such control

 signals:
  void Edited();

 private:
  void Enter(std::size_t field);
  void ShowStates();

  FieldGroup* group_;
  std::vector<FieldControl*> controls_;
};

}  // namespace quorvex
