#pragma once

#include <optional>

#include "plot/BoxDrag.h"
#include "plot/PlotHost.h"
#include "plot/PlotModes.h"
#include "plot3d/PlotClass3D.h"

namespace quorvex {

// Turning the box: it follows the pointer while the left button is held, and the arrow keys. Legend and footnote are
// dragged as in two dimensions.
class BoxModes final : public PlotModes {
 public:
  BoxModes(PlotClass3D& plot, PlotHost& host) : plot_(plot), host_(host), drag_(plot, host) {}

  void MouseDown(int button, double x, double y) override;
  void MouseMove(bool leftHeld, double x, double y) override;
  void MouseUp(int button, double x, double y) override;
  bool KeyDown(int key, bool shift) override;  // by 5 degrees, with Shift by 1
  void LostFocus() override;
  void Resize() override { LostFocus(); }
  bool MoveLegend() override { return drag_.TakeByKeys(plot_.Legend, plot_.Shown().Legend); }
  bool MoveFootNote() override { return drag_.TakeByKeys(plot_.FootNote, plot_.Shown().FootNote); }
  bool Active() const override { return drag_.Dragging(); }

 private:
  void Turn(double right, double down);  // what the viewer sees in front, in degrees

  PlotClass3D& plot_;
  PlotHost& host_;
  BoxDrag drag_;
  struct Grip {
    double x, y;
  };
  std::optional<Grip> held_;  // where the pointer was when the box was last turned
};

}  // namespace quorvex
