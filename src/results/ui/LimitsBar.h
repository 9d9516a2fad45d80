#pragma once

#include <QWidget>
#include <functional>

#include "results/FitLimits.h"

class QComboBox;

namespace quorvex {

// Which limits of a model's values are shown beside them, and at which level. None to begin with.
class LimitsBar : public QWidget {
 public:
  explicit LimitsBar(QWidget* parent);

  LimitsChoice Choice() const;
  std::function<void()> Chosen;  // another choice was made

 private:
  QComboBox *cmboLimits, *cmboLevel;
};

}  // namespace quorvex
