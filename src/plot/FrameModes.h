#pragma once

#include <optional>

#include "core/Prompter.h"
#include "plot/BoxDrag.h"
#include "plot/PlotClass.h"
#include "plot/PlotHost.h"
#include "plot/PlotModes.h"

namespace quorvex {

// Zooming into a box of the frame, reading coordinates, and otherwise dragging legend and footnote.
class FrameModes final : public PlotModes {
 public:
  FrameModes(PlotClass& plot, PlotHost& host, Prompter& prompter)
      : plot_(plot), host_(host), prompter_(prompter), drag_(plot, host) {}

  void MouseDown(int button, double x, double y) override;
  void MouseMove(bool leftHeld, double x, double y) override;
  void MouseUp(int button, double x, double y) override;
  bool KeyDown(int key, bool shift) override;
  void LostFocus() override { EndModes(); }
  void Resize() override;
  bool Measures() const override { return true; }
  void Zoom(int event, double x, double y) override;
  void ShowCoords(int event, double x, double y) override;
  bool MoveLegend() override { return !Active() && drag_.TakeByKeys(plot_.Legend, plot_.Shown().Legend); }
  bool MoveFootNote() override { return !Active() && drag_.TakeByKeys(plot_.FootNote, plot_.Shown().FootNote); }
  bool Active() const override { return ZoomState != kIdle || CoordState || drag_.Dragging(); }

 private:
  void EndModes();
  void EndZoom();
  void EndCoords();
  void ZoomInto();
  bool KeyInZoom(int key, bool shift);
  bool KeyInCoords(int key, bool shift);
  void GoToPoint(const CurveHit& point);
  void ShowMark(double x, double y, double dataX, double dataY);
  DeviceRect RubberBand() const;

  PlotClass& plot_;
  PlotHost& host_;
  Prompter& prompter_;
  BoxDrag drag_;

  enum { kIdle, kArmed, kBandOpen } ZoomState = kIdle;
  double ZoomStartX = 0, ZoomStartY = 0, ZoomEndX = 0, ZoomEndY = 0;

  // Where the pointer was last in the mode that is on, or keys have taken its place; before that, the middle of the
  // frame.
  struct Place {
    double X, Y;
  };
  std::optional<Place> pointer_;
  Place Pointer() const;
  DeviceRect MarkAt(double x, double y) const;

  bool CoordState = false;
  std::optional<CurveHit> hit_;
};

}  // namespace quorvex
