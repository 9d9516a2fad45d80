#pragma once

#include "solve/ui/ProgressWindow.h"

namespace quorvex {

// The progress of a solve that its user has started and waits for: nothing else can be done meanwhile. Escape aborts.
class Solve : public ProgressWindow {
  Q_OBJECT

 public:
  explicit Solve(QWidget* parent);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace quorvex
