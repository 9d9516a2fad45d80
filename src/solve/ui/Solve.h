#pragma once

#include <functional>

#include "solve/ui/ProgressWindow.h"

namespace quorvex {

// The progress of a solve that its user has started and waits for: nothing else can be done meanwhile. Escape aborts.
class Solve : public ProgressWindow {
  Q_OBJECT

 public:
  // Calls `ended` when the run is over, before its summary is told.
  explicit Solve(
      QWidget* parent, std::function<void()> ended = [] {});

  void Show(bool visible) override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  const std::function<void()> ended_;
};

}  // namespace quorvex
