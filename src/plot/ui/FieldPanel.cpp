#include "plot/ui/FieldPanel.h"

#include <QFormLayout>
#include <QLabel>

#include "core/ui/Controls.h"
#include "plot/ui/FieldControl.h"

namespace quorvex {

FieldPanel::FieldPanel(FieldGroup& group, const LocaleText& locale, QWidget* parent)
    : QGroupBox(QString::fromStdString(group.Title), parent), group_(&group) {
  auto* form = new QFormLayout(this);
  QHBoxLayout* row = nullptr;
  for (std::size_t i = 0; i < group.Fields.size(); ++i) {
    const PropertyField& field = group.Fields[i];
    auto* control = new FieldControl(field, locale, this);
    controls_.push_back(control);
    connect(control, &FieldControl::Edited, this, [this, i] { Enter(i); });
    if (!field.Beside) {
      row = new QHBoxLayout;
      if (field.Kind == FieldKind::Flag)
        form->addRow(row);
      else
        form->addRow(LabelFor(control->Focus(), QString::fromStdString(field.Label), this), row);
    }
    row->addWidget(control->Widget());
    if (!field.Hint.empty()) row->addWidget(new QLabel(QString::fromStdString(field.Hint), this));
  }
  ShowEntries();
}

void FieldPanel::Bind(FieldGroup& group) {
  group_ = &group;
  ShowEntries();
}

void FieldPanel::ShowEntries() {
  for (std::size_t i = 0; i < controls_.size(); ++i) controls_[i]->Show(group_->Fields[i].Entry);
  ShowStates();
}

void FieldPanel::ShowStates() {
  for (std::size_t i = 0; i < controls_.size(); ++i)
    controls_[i]->Widget()->setEnabled(group_->Fields[i].Applies && !group_->IsDecided(i));
}

void FieldPanel::Enter(std::size_t field) {
  group_->Fields[field].Entry = controls_[field]->Value();
  ShowStates();
  emit Edited();
}

bool FieldPanel::GoTo(const std::string& control) {
  for (std::size_t i = 0; i < controls_.size(); ++i)
    if (group_->Fields[i].Control == control) {
      controls_[i]->GoTo();
      return true;
    }
  return false;
}

}  // namespace quorvex
