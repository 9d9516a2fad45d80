#include "results/ui/LimitsBar.h"

#include <QComboBox>
#include <QHBoxLayout>

#include "core/ui/Controls.h"

namespace quorvex {

LimitsBar::LimitsBar(QWidget* parent)
    : QWidget(parent), cmboLimits(new QComboBox(this)), cmboLevel(new QComboBox(this)) {
  cmboLimits->setObjectName("cmboLimits");
  NameAloud(cmboLimits, "Limits of the model's values");
  cmboLimits->setToolTip("Where the curve is (confidence), and where one more point would be (prediction)");
  cmboLimits->addItems({"No limits", "Confidence limits", "Prediction limits", "Both limits"});
  cmboLevel->setObjectName("cmboLevel");
  NameAloud(cmboLevel, "Level of the limits");
  cmboLevel->setToolTip(cmboLevel->accessibleName());
  for (const int level : kLimitLevels) cmboLevel->addItem(QString("%1%").arg(level));
  cmboLevel->setCurrentIndex(static_cast<int>(kBandLevel));
  cmboLevel->setEnabled(false);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(cmboLimits);
  row->addWidget(cmboLevel);
  connect(cmboLimits, &QComboBox::currentIndexChanged, this, [this](int kind) {
    cmboLevel->setEnabled(kind != 0);
    Chosen();
  });
  connect(cmboLevel, &QComboBox::currentIndexChanged, this, [this] { Chosen(); });
}

LimitsChoice LimitsBar::Choice() const {
  const int kind = cmboLimits->currentIndex();
  return {.Confidence = (kind & 1) != 0,
          .Prediction = (kind & 2) != 0,
          .Level = static_cast<std::size_t>(cmboLevel->currentIndex())};
}

}  // namespace quorvex
