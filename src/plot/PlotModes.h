#pragma once

namespace quorvex {

// What the user does in a plot's window with mouse and keys. The window hands its events on; positions are device units
// of the picture shown.
class PlotModes {
 public:
  // Button of an event; kMove is none.
  enum Event : int { kMove = 0, kLeft = 1, kRight = 2, kMiddle = 4 };
  enum Key : int { kLeftArrow = 37, kUpArrow = 38, kRightArrow = 39, kDownArrow = 40, kReturn = 13 };

  virtual ~PlotModes() = default;

  virtual void MouseDown(int button, double x, double y) = 0;
  virtual void MouseMove(bool leftHeld, double x, double y) = 0;
  virtual void MouseUp(int button, double x, double y) = 0;
  virtual bool KeyDown(int key, bool shift) = 0;  // whether it is of use here
  virtual void LostFocus() = 0;
  virtual void Resize() = 0;

  // Whether there is a frame to measure in, for the two modes below.
  virtual bool Measures() const { return false; }

  // Each begins its mode, whatever the event, and from then on takes its events. Zoom: the left button opens a rubber
  // band and, pressed again or let go elsewhere, zooms into it. Coordinates: those of the pointer are shown, or those
  // of the curve point next to it, which the arrow keys then move along the curve. The other buttons end both modes.
  // Without a mouse the arrow keys move a cross, by a pixel with Shift, and Return is the left button of the zoom; for
  // coordinates they begin, where no mouse has moved, at the curve point next to the middle, go along the curve, ten
  // points with Shift, and up and down from curve to curve.
  virtual void Zoom(int /*event*/, double /*x*/, double /*y*/) {}
  virtual void ShowCoords(int /*event*/, double /*x*/, double /*y*/) {}

  // Lets the arrow keys move the legend or the footnote until Return drops it. False where there is none.
  virtual bool MoveLegend() = 0;
  virtual bool MoveFootNote() = 0;

  // Whether something has begun that is not yet over.
  virtual bool Active() const = 0;
};

}  // namespace quorvex
