#pragma once

#include <string>
#include <utility>
#include <vector>

#include "drawing/RecordingSurface.h"
#include "plot/PlotHost.h"
#include "plot/PlotPage.h"

namespace quorvex {

using Events = std::vector<std::string>;

// A window of 400 by 300 units that writes down what the plot asks of it.
class RecordingHost : public PlotHost {
 public:
  RecordingHost(PlotPage& plot, Prompter& prompter) : plot_(plot), prompter_(prompter) {
    RefreshPicture();
    Done.clear();
  }

  Events Done;
  std::int32_t Width = 400;
  Events Take() { return std::exchange(Done, {}); }

  std::int32_t ScaleWidth() const override { return Width; }
  std::int32_t ScaleHeight() const override { return 300; }
  double TwipsPerPixelX() const override { return 15; }
  double TwipsPerPixelY() const override { return 15; }
  void EnableMenu() override { Done.push_back("menu on"); }
  void DisableMenu() override { Done.push_back("menu off"); }
  void SetCursor(PlotCursor cursor) override {
    Done.push_back(cursor == PlotCursor::kNormal ? "arrow" : cursor == PlotCursor::kCross ? "cross" : "up arrow");
  }
  void PlaceFrame() override { Done.push_back("frame"); }
  void ShowPoint(const std::string& x, const std::string& y) override { Done.push_back(x + " | " + y); }
  void HideFrame() override { Done.push_back("no frame"); }
  void ShowOverlay(PlotOverlay overlay, const DeviceRect& r) override {
    static constexpr const char* kNames[] = {"band", "mark", "hit", "box"};
    Done.push_back(std::string(kNames[static_cast<int>(overlay)]) + " " + std::to_string(r.left) + " " +
                   std::to_string(r.top) + " " + std::to_string(r.right) + " " + std::to_string(r.bottom));
  }
  void HideOverlay() override { Done.push_back("no overlay"); }
  void PlotChanged(std::string_view what) override { Done.push_back("changed: " + std::string(what)); }
  void RefreshPicture() override {
    RecordingSurface surface(Width, 300);
    surface.Caps = {{DeviceCap::HORZSIZE, Width / 4}, {DeviceCap::VERTSIZE, 75}};
    plot_.RefreshPlot(surface, prompter_);
    Done.push_back("refresh");
  }
  void RefreshSoon() override { Done.push_back("refresh soon"); }

 private:
  PlotPage& plot_;
  Prompter& prompter_;
};

}  // namespace quorvex
