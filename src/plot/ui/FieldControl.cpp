#include "plot/ui/FieldControl.h"

#include <QAbstractSpinBox>
#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

#include "core/NumberText.h"
#include "core/ui/ColorButton.h"
#include "plot/ui/FontButton.h"
#include "plot/ui/StyleSamples.h"

namespace quorvex {
namespace {

constexpr const char* kLineStyles[] = {"Solid", "Dash", "Dot", "Dash dot", "Dash dot dot"};
constexpr const char* kMarkers[] = {
    "Circle",        "Square",        "Diagonal cross", "Upright cross",      "Triangle up",
    "Triangle down", "Filled circle", "Filled square",  "Filled triangle up", "Filled triangle down"};
constexpr const char* kPatterns[] = {"General", "0", "0.0", "0.00", "0.000", "0.0###", "0.0E+00", "0.00E+00"};

QString Text(const FieldValue& value) { return QString::fromStdString(std::get<std::string>(value)); }

// Takes any text, and steps the number that it may be within the range of a field.
class NumberBox : public QAbstractSpinBox {
 public:
  NumberBox(const PropertyField& field, const LocaleText& locale, QWidget* parent)
      : QAbstractSpinBox(parent), locale_(locale), least_(field.Least), most_(field.Most) {}

  QLineEdit* Edit() const { return lineEdit(); }

  void stepBy(int steps) override {
    const double step = most_ - least_ < 1 ? 0.005 : 1;
    const double present = NumericText(text().toStdString(), locale_.DecimalSeparator).value_or(least_);
    const double value = std::clamp(present + steps * step, least_, most_);
    lineEdit()->setText(QString::fromStdString(LocalizeExpression(GeneralNumber(value), locale_)));
    selectAll();
  }

 protected:
  StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }

 private:
  LocaleText locale_;
  double least_, most_;
};

}  // namespace

FieldControl::FieldControl(const PropertyField& field, const LocaleText& locale, QWidget* parent) : QObject(parent) {
  switch (field.Kind) {
    case FieldKind::PlotText:
    case FieldKind::Number:
      MakeLine(field, locale, parent);
      break;
    case FieldKind::Lines:
      MakeLines(parent);
      break;
    case FieldKind::Pattern:
      MakePattern(parent);
      break;
    case FieldKind::Flag:
      MakeFlag(field, parent);
      break;
    case FieldKind::Choice:
    case FieldKind::LineStyle:
    case FieldKind::Marker:
      MakeChoices(field, parent);
      break;
    case FieldKind::Color:
      MakeColor(parent);
      break;
    case FieldKind::Font:
      MakeFont(field, parent);
      break;
  }
  focus_->setObjectName(QString::fromStdString(field.Control));
  QString name = QString::fromStdString(field.Label).remove('&');
  if (name.endsWith(':')) name.chop(1);
  focus_->setAccessibleName(name);
}

void FieldControl::Show(const FieldValue& value) {
  const QSignalBlocker quiet(this);
  show_(value);
}

void FieldControl::GoTo() {
  focus_->setFocus();
  if (auto* edit = qobject_cast<QLineEdit*>(focus_)) edit->selectAll();
  if (auto* box = qobject_cast<QAbstractSpinBox*>(focus_)) box->selectAll();
  if (auto* list = qobject_cast<QComboBox*>(focus_); list != nullptr && list->isEditable())
    list->lineEdit()->selectAll();
}

template <typename Control>
Control* FieldControl::Take(Control* control) {
  widget_ = focus_ = control;
  return control;
}

void FieldControl::MakeLine(const PropertyField& field, const LocaleText& locale, QWidget* parent) {
  QLineEdit* edit = nullptr;
  if (field.Kind == FieldKind::Number && std::isfinite(field.Most))
    edit = Take(new NumberBox(field, locale, parent))->Edit();
  else
    edit = Take(new QLineEdit(parent));
  if (field.Kind == FieldKind::Number) widget_->setMaximumWidth(edit->fontMetrics().averageCharWidth() * 24);
  value_ = [edit] { return edit->text().toStdString(); };
  show_ = [edit](const FieldValue& value) { edit->setText(Text(value)); };
  connect(edit, &QLineEdit::textChanged, this, &FieldControl::Edited);
}

void FieldControl::MakeLines(QWidget* parent) {
  auto* edit = Take(new QPlainTextEdit(parent));
  edit->setTabChangesFocus(true);
  value_ = [edit] { return edit->toPlainText().replace('\n', "\r\n").toStdString(); };
  show_ = [edit](const FieldValue& value) { edit->setPlainText(Text(value)); };
  connect(edit, &QPlainTextEdit::textChanged, this, &FieldControl::Edited);
}

void FieldControl::MakeFlag(const PropertyField& field, QWidget* parent) {
  auto* box = Take(new QCheckBox(QString::fromStdString(field.Label), parent));
  value_ = [box] { return std::int32_t{box->isChecked()}; };
  show_ = [box](const FieldValue& value) { box->setChecked(std::get<std::int32_t>(value) != 0); };
  connect(box, &QCheckBox::toggled, this, &FieldControl::Edited);
}

void FieldControl::MakeChoices(const PropertyField& field, QWidget* parent) {
  auto* list = Take(new QComboBox(parent));
  for (const char* choice : field.Choices) list->addItem(choice);
  if (!field.Swatches.empty()) list->setIconSize({kLineSampleWidth, kSampleHeight});
  for (int choice = 0; const auto& colours : field.Swatches) {
    if (!colours.empty()) list->setItemIcon(choice, ColorSample(colours, *list));
    ++choice;
  }
  if (field.Kind == FieldKind::LineStyle) {
    list->setIconSize({kLineSampleWidth, kSampleHeight});
    for (int style = 0; const char* name : kLineStyles) list->addItem(LineSample(style++, *list), name);
  }
  if (field.Kind == FieldKind::Marker) {
    list->setIconSize({kMarkerSampleWidth, kSampleHeight});
    for (int style = 0; const char* name : kMarkers) list->addItem(MarkerSample(style++, *list), name);
  }
  value_ = [list] { return std::int32_t{list->currentIndex()}; };
  // A file may have a number that is none of them.
  show_ = [list](const FieldValue& value) {
    const std::int32_t choice = std::get<std::int32_t>(value);
    list->setCurrentIndex(choice < list->count() ? choice : -1);
  };
  connect(list, &QComboBox::currentIndexChanged, this, &FieldControl::Edited);
}

void FieldControl::MakePattern(QWidget* parent) {
  auto* list = Take(new QComboBox(parent));
  list->setEditable(true);
  list->setToolTip("0 is a digit that is always shown, # one that is shown when needed; General chooses by itself");
  for (const char* pattern : kPatterns) list->addItem(pattern);
  value_ = [list] { return list->currentText().toStdString(); };
  show_ = [list](const FieldValue& value) { list->setEditText(Text(value)); };
  connect(list, &QComboBox::editTextChanged, this, &FieldControl::Edited);
}

void FieldControl::MakeColor(QWidget* parent) {
  auto* button = Take(new ColorButton(parent));
  value_ = [button] { return button->Color(); };
  show_ = [button](const FieldValue& value) { button->SetColor(std::get<std::int32_t>(value)); };
  connect(button, &ColorButton::Chosen, this, &FieldControl::Edited);
}

void FieldControl::MakeFont(const PropertyField& field, QWidget* parent) {
  auto* font = new FontButton(Take(new QWidget(parent)));
  auto* color = new ColorButton(widget_);
  focus_ = font;
  color->setObjectName(QString::fromStdString(field.Control) + "Color");
  color->setAccessibleName(QString::fromStdString(field.Label).remove('&').remove(':') + " color");
  auto* both = new QHBoxLayout(widget_);
  both->setContentsMargins({});
  both->addWidget(font, 1);
  both->addWidget(color);
  value_ = [font, color] { return ColoredFont{font->Chosen(), color->Color()}; };
  show_ = [font, color](const FieldValue& value) {
    const auto& chosen = std::get<ColoredFont>(value);
    font->Show(chosen.Font);
    color->SetColor(chosen.Color);
  };
  connect(font, &FontButton::FontChosen, this, &FieldControl::Edited);
  connect(color, &ColorButton::Chosen, this, &FieldControl::Edited);
}

}  // namespace quorvex
