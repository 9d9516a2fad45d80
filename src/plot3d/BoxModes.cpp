#include "plot3d/BoxModes.h"

#include "plot/PlotUndo.h"

namespace quorvex {

void BoxModes::MouseDown(int button, double x, double y) {
  if (button != kLeft) return;
  drag_.MouseDown(x, y, plot_.Shown().Legend, plot_.Shown().FootNote);
  if (!drag_.Dragging() && plot_.PlotCreated) held_ = {x, y};
}

void BoxModes::MouseMove(bool leftHeld, double x, double y) {
  drag_.MouseMove(leftHeld, x, y);
  if (!leftHeld) held_.reset();
  if (!held_) return;
  // Across the whole picture the box turns by half.
  constexpr double kHalfTurn = 180;
  Turn((x - held_->x) * kHalfTurn / host_.ScaleWidth(), (y - held_->y) * kHalfTurn / host_.ScaleHeight());
  held_ = {x, y};
}

void BoxModes::MouseUp(int button, double x, double y) {
  if (button != kLeft) return;
  if (drag_.Dragging()) drag_.DragDrop(x, y);
  held_.reset();
}

bool BoxModes::KeyDown(int key, bool shift) {
  if (drag_.Dragging()) return drag_.KeyDown(key, shift);
  const double degrees = shift ? 1 : 5;
  if (!plot_.PlotCreated) return false;
  if (key == kLeftArrow || key == kRightArrow)
    Turn(key == kRightArrow ? degrees : -degrees, 0);
  else if (key == kUpArrow || key == kDownArrow)
    Turn(0, key == kDownArrow ? degrees : -degrees);
  else
    return false;
  return true;
}

void BoxModes::LostFocus() {
  drag_.Cancel();
  held_.reset();
}

void BoxModes::Turn(double right, double down) {
  if (right == 0 && down == 0) return;
  // What is in front moves the other way where the picture stands on its head.
  plot_.Turn(plot_.View().OverTheTop() ? -right : right, down);
  host_.RefreshSoon();
  host_.PlotChanged(kTurnChange);
}

}  // namespace quorvex
