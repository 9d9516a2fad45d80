#pragma once

#include "plot/PlotHost.h"
#include "plot/PlotPage.h"

namespace quorvex {

// Lets the user take a plot's legend or footnote elsewhere: a floating box follows the pointer, and where it is dropped
// the legend is drawn from then on. Pointer positions are device units of the picture.
class BoxDrag {
 public:
  BoxDrag(PlotPage& plot, PlotHost& host) : plot_(plot), host_(host) {}

  // The left button went down: takes hold of the box shown there, if there is one. `legend` and `footNote` are the
  // rectangles as drawn.
  void MouseDown(double x, double y, const DeviceRect& legend, const DeviceRect& footNote);

  // The pointer moved. Without the button held the drag is over, and the box stays where it was.
  void MouseMove(bool leftHeld, double x, double y);

  // The box is dropped.
  void DragDrop(double x, double y);

  // The same by keys, from a box shown at `where`: arrows move it, by a pixel with Shift, and Return drops it. False
  // where it is not shown.
  bool TakeByKeys(PlotBox& box, const DeviceRect& where);
  bool KeyDown(int key, bool shift);  // whether it is of use

  void Cancel();
  bool Dragging() const { return box_ != nullptr; }

 private:
  bool TakeHold(PlotBox& box, const DeviceRect& where, double x, double y);
  DeviceRect At(double x, double y) const;

  PlotPage& plot_;
  PlotHost& host_;
  PlotBox* box_ = nullptr;
  DeviceRect start_;            // where it stood
  double GrabX = 0, GrabY = 0;  // the pointer's place in it
  bool byKeys_ = false;
  double left_ = 0, top_ = 0;  // where keys have taken it
};

}  // namespace quorvex
