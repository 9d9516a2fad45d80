#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "plot/PageSetup.h"

namespace quorvex {

enum class PlotCursor { kNormal, kCross, kUpArrow };

// What stands over the picture for a while, without being part of it.
enum class PlotOverlay {
  kRubberBand,     // the box to zoom into
  kCross,          // two lines through the middle of the rectangle
  kCrossInSquare,  // and the rectangle itself: a curve point is close
  kFloatingBox,    // a legend or footnote on its way
};

// The window that shows a plot, as the plot's modes see it. Coordinates are device units of its picture.
class PlotHost {
 public:
  virtual ~PlotHost() = default;

  virtual std::int32_t ScaleWidth() const = 0;
  virtual std::int32_t ScaleHeight() const = 0;
  virtual double TwipsPerPixelX() const = 0;
  virtual double TwipsPerPixelY() const = 0;

  virtual void EnableMenu() = 0;
  virtual void DisableMenu() = 0;
  virtual void SetCursor(PlotCursor cursor) = 0;

  // The coordinates frame and its two texts.
  virtual void PlaceFrame() = 0;
  virtual void ShowPoint(const std::string& x, const std::string& y) = 0;
  virtual void HideFrame() = 0;

  // At most one overlay is seen: a new one takes the place of the last.
  virtual void ShowOverlay(PlotOverlay overlay, const DeviceRect& where) = 0;
  virtual void HideOverlay() = 0;

  virtual void PlotChanged(std::string_view what) = 0;  // there is something to save, or to be taken back
  virtual void RefreshPicture() = 0;                    // calls the plot's RefreshPlot
  virtual void RefreshSoon() = 0;  // the same, once for all that happens before the user can see it
};

}  // namespace quorvex
