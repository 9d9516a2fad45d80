#include "plot/ui/StyleSamples.h"

#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QWidget>
#include <array>

#include "drawing/Markers.h"
#include "drawing/StyledLines.h"
#include "drawing/ui/QtSurface.h"

namespace quorvex {
namespace {

constexpr std::int32_t kBlack = 0;

// A surface draws on full pixels alone, so that what it draws in black becomes as much of the text's colour.
template <typename Draw>
QIcon Sample(int width, const QWidget& control, Draw draw) {
  const double scale = control.devicePixelRatioF();
  QImage image((QSizeF(width, kSampleHeight) * scale).toSize(), QImage::Format_RGB32);
  image.fill(Qt::white);
  {
    QtSurface surface(image);
    draw(surface, [scale](double length) { return qRound(length * scale * QtSurface::kUnitsPerPixel); });
  }
  image.invertPixels();
  const QImage ink = image.convertToFormat(QImage::Format_Grayscale8);
  QImage sample(image.size(), QImage::Format_RGB32);
  sample.fill(control.palette().color(QPalette::Text));
  sample.setAlphaChannel(ink);
  sample.setDevicePixelRatio(scale);
  return QPixmap::fromImage(sample);
}

}  // namespace

QIcon LineSample(int style, const QWidget& control) {
  return Sample(kLineSampleWidth, control, [style](QtSurface& surface, const auto& units) {
    const std::int32_t y = units(kSampleHeight / 2);
    DrawStyledSegment(surface, {units(2), y}, {units(kLineSampleWidth - 2), y}, style, 1, kBlack, units(1));
  });
}

QIcon MarkerSample(int style, const QWidget& control) {
  return Sample(kMarkerSampleWidth, control, [style](QtSurface& surface, const auto& units) {
    const std::array<std::int32_t, 1> x{units(kMarkerSampleWidth / 2)}, y{units(kSampleHeight / 2)};
    DrawMarkers(surface, x, y, kBlack, style, units(5), units(1));
  });
}

QIcon ColorSample(const std::vector<std::int32_t>& colours, const QWidget& control) {
  const double scale = control.devicePixelRatioF();
  QPixmap sample((QSizeF(kLineSampleWidth, kSampleHeight) * scale).toSize());
  sample.setDevicePixelRatio(scale);
  sample.fill(Qt::transparent);
  QPainter painter(&sample);
  const double width = static_cast<double>(kLineSampleWidth) / static_cast<double>(colours.size());
  for (std::size_t i = 0; i < colours.size(); ++i)
    painter.fillRect(QRectF(static_cast<double>(i) * width, 3, width, kSampleHeight - 6),
                     QColor(colours[i] & 0xFF, colours[i] >> 8 & 0xFF, colours[i] >> 16 & 0xFF));
  return sample;
}

}  // namespace quorvex
