#include "plot/ui/StyleSamples.h"

#include <QImage>
#include <QPixmap>
#include <QWidget>
#include <array>

#include "plot/Markers.h"
#include "plot/StyledLines.h"
#include "plot/ui/QtSurface.h"

namespace quorvex {
namespace {

// On the control's background, since a surface draws on full pixels alone.
template <typename Draw>
QIcon Sample(int width, const QWidget& control, Draw draw) {
  const double scale = control.devicePixelRatioF();
  QImage image((QSizeF(width, kSampleHeight) * scale).toSize(), QImage::Format_RGB32);
  image.fill(control.palette().color(QPalette::Base));
  const QColor text = control.palette().color(QPalette::Text);
  {
    QtSurface surface(image);
    const auto units = [&](double length) { return qRound(length * scale * QtSurface::kUnitsPerPixel); };
    draw(surface, units, text.red() | text.green() << 8 | text.blue() << 16);
  }
  image.setDevicePixelRatio(scale);
  return QPixmap::fromImage(image);
}

}  // namespace

QIcon LineSample(int style, const QWidget& control) {
  return Sample(kLineSampleWidth, control, [style](QtSurface& surface, const auto& units, std::int32_t colour) {
    const std::int32_t y = units(kSampleHeight / 2);
    DrawStyledSegment(surface, {units(2), y}, {units(kLineSampleWidth - 2), y}, style, 1, colour, units(1));
  });
}

QIcon MarkerSample(int style, const QWidget& control) {
  return Sample(kMarkerSampleWidth, control, [style](QtSurface& surface, const auto& units, std::int32_t colour) {
    const std::array<std::int32_t, 1> x{units(kMarkerSampleWidth / 2)}, y{units(kSampleHeight / 2)};
    DrawMarkers(surface, x, y, colour, style, units(5), units(1));
  });
}

}  // namespace quorvex
