#pragma once

#include <optional>

#include "core/Prompter.h"
#include "plot/BoxDrag.h"
#include "plot/PlotClass.h"
#include "plot/PlotHost.h"

namespace quorvex {

// What the user does in a plot's window with mouse and keys: zoom into a box, read coordinates, and otherwise drag
// legend and footnote. The window hands its events on; positions are device units of the picture shown.
class PlotModes {
 public:
  // Button of an event; kMove is none.
  enum Event : int { kMove = 0, kLeft = 1, kRight = 2, kMiddle = 4 };
  enum Key : int { kLeftArrow = 37, kRightArrow = 39 };

  PlotModes(PlotClass& plot, PlotHost& host, Prompter& prompter)
      : plot_(plot), host_(host), prompter_(prompter), drag_(plot, host) {}

  void MouseDown(int button, double x, double y);
  void MouseMove(bool leftHeld, double x, double y);
  void MouseUp(int button, double x, double y);
  void KeyDown(int key);
  void LostFocus() { EndModes(); }
  void Resize();

  // Each begins its mode, whatever the event, and from then on takes its events. Zoom: the left button opens a rubber
  // band and, pressed again or let go elsewhere, zooms into it. Coordinates: those of the pointer are shown, or those
  // of the curve point next to it, which the arrow keys then move along the curve. The other buttons end both modes.
  void Zoom(int event, double x, double y);
  void ShowCoords(int event, double x, double y);

  bool Active() const { return ZoomState != kIdle || CoordState || drag_.Dragging(); }

 private:
  void EndModes();
  void EndZoom();
  void EndCoords();
  void ZoomInto();
  void ShowMark(double x, double y, double dataX, double dataY);
  DeviceRect RubberBand() const;

  PlotClass& plot_;
  PlotHost& host_;
  Prompter& prompter_;
  BoxDrag drag_;

  enum { kIdle, kArmed, kBandOpen } ZoomState = kIdle;
  double ZoomStartX = 0, ZoomStartY = 0, ZoomEndX = 0, ZoomEndY = 0;

  bool CoordState = false;
  std::optional<CurveHit> hit_;
};

}  // namespace quorvex
