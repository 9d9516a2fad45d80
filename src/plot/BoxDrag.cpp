#include "plot/BoxDrag.h"

#include <algorithm>
#include <cmath>

#include "plot/KeyStep.h"
#include "plot/PlotModes.h"
#include "plot/PlotUndo.h"

namespace quorvex {

void BoxDrag::MouseDown(double x, double y, const DeviceRect& legend, const DeviceRect& footNote) {
  if (!TakeHold(plot_.Legend, legend, x, y)) TakeHold(plot_.FootNote, footNote, x, y);
}

bool BoxDrag::TakeHold(PlotBox& box, const DeviceRect& where, double x, double y) {
  if (!box.Show || where == DeviceRect{} || !where.Contains(x, y)) return false;
  box_ = &box;
  box.Dragging = true;
  start_ = where;
  GrabX = x - where.left;
  GrabY = y - where.top;
  host_.ShowOverlay(PlotOverlay::kFloatingBox, where);
  return true;
}

DeviceRect BoxDrag::At(double x, double y) const {
  const auto left = static_cast<std::int32_t>(std::lrint(x - GrabX));
  const auto top = static_cast<std::int32_t>(std::lrint(y - GrabY));
  return {left, top, left + start_.width(), top + start_.height()};
}

void BoxDrag::MouseMove(bool leftHeld, double x, double y) {
  if (!Dragging()) return;
  if (byKeys_) return;
  if (leftHeld)
    host_.ShowOverlay(PlotOverlay::kFloatingBox, At(x, y));
  else
    Cancel();
}

bool BoxDrag::TakeByKeys(PlotBox& box, const DeviceRect& where) {
  left_ = where.left;
  top_ = where.top;
  byKeys_ = !Dragging() && TakeHold(box, where, left_, top_);
  if (byKeys_) host_.DisableMenu();
  return byKeys_;
}

bool BoxDrag::KeyDown(int key, bool shift) {
  if (!byKeys_) return false;
  if (key == PlotModes::kReturn) {
    DragDrop(left_, top_);
    return true;
  }
  const auto [right, down] = KeyStep(key, shift, host_);
  left_ = std::clamp(left_ + right, 0.0, std::max(0.0, 1.0 * host_.ScaleWidth() - start_.width()));
  top_ = std::clamp(top_ + down, 0.0, std::max(0.0, 1.0 * host_.ScaleHeight() - start_.height()));
  host_.ShowOverlay(PlotOverlay::kFloatingBox, At(left_, top_));
  return true;
}

void BoxDrag::DragDrop(double x, double y) {
  if (!Dragging()) return;
  const DeviceRect where = At(x, y);
  if (where == start_) return Cancel();  // a click
  // In units of the plot's first size, so that the box keeps its place in a window of any other.
  const auto relative = [](std::int32_t place, std::int32_t reference, std::int32_t scale) {
    return std::max(static_cast<float>(static_cast<double>(place) * reference / scale), 2.0F);
  };
  box_->Left = relative(where.left, plot_.InitPlotWidth, host_.ScaleWidth());
  box_->Top = relative(where.top, plot_.InitPlotHeight, host_.ScaleHeight());
  box_->Width = static_cast<float>(where.width());
  box_->Height = static_cast<float>(where.height());
  const bool legend = box_ == &plot_.Legend;
  Cancel();
  host_.RefreshPicture();
  host_.PlotChanged(legend ? kMoveLegendChange : kMoveFootNoteChange);
}

void BoxDrag::Cancel() {
  if (!Dragging()) return;
  box_->Dragging = false;
  box_ = nullptr;
  host_.HideOverlay();
  if (byKeys_) host_.EnableMenu();
  byKeys_ = false;
}

}  // namespace quorvex
