#include "app/ui/FramePlace.h"

#include <QScreen>
#include <QWidget>
#include <algorithm>

#include "app/SettingsStore.h"

namespace quorvex {
namespace {

constexpr int kUnitsPerPixel = 15;  // window units are 1/1440 inch

}  // namespace

void MoveToStoredPlace(QWidget& frame, const Settings& settings) {
  const QRect screen = frame.screen()->availableGeometry();
  const FrameGeometry stored =
      StartupGeometry(settings, screen.height() * kUnitsPerPixel, screen.width() * kUnitsPerPixel);
  const auto pixels = [](double units) { return static_cast<int>(std::clamp(units / kUnitsPerPixel, -1e6, 1e6)); };
  frame.resize(pixels(stored.Width), pixels(stored.Height));
  // A screen may be gone since; the title bar must be within reach.
  const QRect all = frame.screen()->availableVirtualGeometry();
  constexpr int kReach = 100;
  frame.move(std::clamp(pixels(stored.Left), all.left() + kReach - frame.width(), all.right() - kReach),
             std::clamp(pixels(stored.Top), all.top(), all.bottom() - kReach));
}

int StorePlace(const QWidget& frame, Settings& settings) {
  const bool elsewhere = frame.isMaximized() || frame.isMinimized();
  const QRect place = elsewhere ? frame.normalGeometry() : QRect(frame.pos(), frame.size());
  const auto units = [](int pixels) { return double{1} * pixels * kUnitsPerPixel; };
  const int error =
      SaveStartupSettings(settings, {units(place.x()), units(place.y()), units(place.height()), units(place.width())});
  return error != 0 ? error : SaveChanges(settings);
}

}  // namespace quorvex
