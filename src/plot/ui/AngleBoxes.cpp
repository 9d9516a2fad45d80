#include "plot/ui/AngleBoxes.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>
#include <algorithm>
#include <optional>

#include "plot/ui/PlotView.h"

namespace quorvex {
namespace {

// A box for whole degrees. What is typed beyond its range stands until it is done; then it comes back into the range:
// round and round where the angle goes round, else to the nearer end.
class AngleBox : public QSpinBox {
 public:
  AngleBox(int most, QWidget* parent) : QSpinBox(parent) {
    setRange(0, most);
    setWrapping(most == kRound);
    setSuffix(QString::fromUtf8("\u00B0"));
  }

  void stepBy(int steps) override {
    interpretText();
    setValue(InRange(value() + steps * singleStep()));
    selectAll();
  }

 protected:
  QValidator::State validate(QString& text, int& position) const override {
    const QValidator::State state = QSpinBox::validate(text, position);
    if (state != QValidator::Invalid) return state;
    return Typed(text) == locale().negativeSign() || Degrees(text) ? QValidator::Intermediate : state;
  }
  void fixup(QString& text) const override {
    if (const auto degrees = Degrees(text)) text = textFromValue(InRange(*degrees));
  }

 private:
  static constexpr int kRound = 360;

  QString Typed(QString text) const {
    if (text.endsWith(suffix())) text.chop(suffix().size());
    return text.trimmed();
  }
  // The number that a text is, be it out of range.
  std::optional<int> Degrees(const QString& text) const {
    bool isNumber = false;
    const int degrees = locale().toInt(Typed(text), &isNumber);
    return isNumber ? std::optional(degrees) : std::nullopt;
  }
  // 360 stays, but a step from there to 0 would show the same picture.
  int InRange(int degrees) const {
    if (!wrapping()) return std::clamp(degrees, minimum(), maximum());
    if (degrees >= 0 && degrees <= kRound) return degrees;
    return (degrees % kRound + kRound) % kRound;
  }
};

QSpinBox* NewAngleBox(const char* name, const QString& accessibleName, const QString& caption, int most,
                      QWidget& parent) {
  auto* box = new AngleBox(most, &parent);
  box->setObjectName(name);
  box->setAccessibleName(accessibleName);
  box->setToolTip(accessibleName);
  auto* label = new QLabel(caption, &parent);
  label->setBuddy(box);
  parent.layout()->addWidget(label);
  parent.layout()->addWidget(box);
  return box;
}

}  // namespace

AngleBoxes::AngleBoxes(PlotView& view, QWidget* parent) : QWidget(parent), view_(view) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(6, 0, 6, 0);
  XYAngle = NewAngleBox("XYAngle", tr("X1-X2 view angle"), tr("X&1-X2:"), 360, *this);
  ZAngle = NewAngleBox("ZAngle", tr("X1-Y view angle"), tr("&X1-Y:"), 180, *this);
  setTabOrder(ZAngle, &view);  // as they stand over it
  ShowAngles();
  connect(XYAngle, &QSpinBox::valueChanged, &view, &PlotView::SetXYAngle);
  connect(ZAngle, &QSpinBox::valueChanged, &view, &PlotView::SetZAngle);
  connect(&view, &PlotView::Changed, this, &AngleBoxes::ShowAngles);
  connect(&view, &PlotView::Redrawn, this, &AngleBoxes::ShowAngles);
}

void AngleBoxes::ShowAngles() {
  const QSignalBlocker quietXY(XYAngle), quietZ(ZAngle);
  XYAngle->setValue(qRound(view_.Angles()->XY));
  ZAngle->setValue(qRound(view_.Angles()->Z));
}

}  // namespace quorvex
