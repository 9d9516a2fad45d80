#include "drawing/ui/QtSurface.h"

#include <QFontMetrics>
#include <QPaintEngine>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>

#include "core/NumberText.h"
#include "drawing/DeviceSize.h"
#include "drawing/FacetReach.h"

namespace quorvex {
namespace {

constexpr double kMiddle = 0.5;  // of a pixel
constexpr double kMillimetresPerInch = 25.4, kTwipsPerInch = 1440;

QColor ToColor(std::int32_t colour) { return {colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF}; }

QBrush ToBrush(const SurfaceBrush& brush) {
  return brush.Colour ? QBrush(ToColor(*brush.Colour)) : QBrush(Qt::NoBrush);
}

QPolygonF ToPolygon(std::span<const ExactPoint> points) {
  QPolygonF polygon;
  polygon.reserve(static_cast<qsizetype>(points.size()));
  for (const ExactPoint& point : points) polygon.append(QPointF(point.x, point.y));
  return polygon;
}

QString ToText(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

bool IsOfPixels(const QPaintDevice& device) { return device.paintEngine()->type() == QPaintEngine::Raster; }

}  // namespace

QtSurface::QtSurface(QPaintDevice& device, Device kind) : QtSurface(device, device, kind) {}

QtSurface::QtSurface(QPaintDevice& device, QImage& measures) : QtSurface(device, measures, Device::kPicture) {}

QtSurface::QtSurface(QPainter& painter, QImage& measures)
    : QtSurface(*painter.device(), measures, Device::kPicture, &painter) {
  BeginPainting();
}

QtSurface::QtSurface(QPaintDevice& device, QPaintDevice& measures, Device kind, QPainter* painter)
    : device_(device),
      measures_(measures),
      kind_(kind),
      raster_(IsOfPixels(device)),
      units_(IsOfPixels(measures) ? kUnitsPerPixel : 1),
      lines_(units_),
      painter_(painter != nullptr ? *painter : ownPainter_),
      windowExtent_{ScaleWidth(), ScaleHeight()},
      viewportExtent_(windowExtent_),
      scale_(1.0 / units_, 1.0 / units_) {}

QtSurface::~QtSurface() { Flush(); }

// A printer that nothing is drawn on has no page to print.
QPainter& QtSurface::Painter() {
  if (!painter_.isActive()) {
    painter_.begin(&device_);
    if (&device_ != &measures_) painter_.setWindow(0, 0, measures_.width(), measures_.height());
    BeginPainting();
    // Now that the painter is about its work the image has its pixels to itself, and asking for them moves none.
    if (auto* const image = dynamic_cast<QImage*>(&device_); image && image->format() == QImage::Format_RGB32)
      canvas_.emplace(reinterpret_cast<std::uint32_t*>(image->bits()),
                      image->bytesPerLine() / static_cast<qsizetype>(sizeof(std::uint32_t)), image->width(),
                      image->height());
  }
  return painter_;
}

void QtSurface::BeginPainting() {
  painter_.setRenderHint(QPainter::Antialiasing);
  painter_.setBackgroundMode(Qt::OpaqueMode);
}

PixelCanvas* QtSurface::Canvas() {
  Painter();
  const bool plainMap = scale_ == QPointF(1, 1) / units_ && origin_.isNull();
  return canvas_ && plainMap && !clipsToPath_ ? &*canvas_ : nullptr;
}

std::int32_t QtSurface::GetDeviceCaps(DeviceCap index) const {
  const auto millimetres = [](int pixels, int perInch) { return RoundToInt32(pixels * kMillimetresPerInch / perInch); };
  return DeviceSize{{ScaleWidth(), ScaleHeight()},
                    {millimetres(measures_.width(), measures_.logicalDpiX()),
                     millimetres(measures_.height(), measures_.logicalDpiY())},
                    measures_.logicalDpiY() * units_,
                    measures_.depth()}
      .Cap(index);
}

double QtSurface::TwipsPerPixelX() const { return kTwipsPerInch / (measures_.logicalDpiX() * units_); }
double QtSurface::TwipsPerPixelY() const { return kTwipsPerInch / (measures_.logicalDpiY() * units_); }

SurfaceHandle QtSurface::CreatePen(int style, std::int32_t width, std::int32_t colour) {
  return objects_.Add(SurfacePen{width, colour, style});
}

SurfaceHandle QtSurface::CreateSolidBrush(std::int32_t colour) { return objects_.Add(SurfaceBrush{colour}); }

SurfaceHandle QtSurface::SelectObject(SurfaceHandle object) {
  // The lines gathered so far are drawn with the old pen, and so were the stamps.
  FlushLines();
  fontIsCurrent_ = false;
  stamps_.clear();
  return objects_.Select(object);
}

void QtSurface::Flush() {
  FlushLines();
  FlushFacets();
}

void QtSurface::FlushFacets() {
  if (gatheredFacets_.empty()) return;
  const auto facets = ReachUnderLater(std::exchange(gatheredFacets_, {}));
  const std::vector<std::int32_t> colours = std::exchange(facetColours_, {});
  Painter().setTransform(QTransform::fromTranslate(kMiddle, kMiddle));
  Painter().setPen(Qt::NoPen);
  for (std::size_t i = 0; i < facets.size(); ++i) {
    QPolygonF corners;
    for (const DevicePoint& corner : facets[i]) corners.append(InPixels(corner));
    Painter().setBrush(ToColor(colours[i]));
    Painter().drawPolygon(corners);
  }
}

void QtSurface::FlushLines() {
  if (lines_.Empty()) return;
  const bool onPixels = lines_.RunsAlongOrDown();
  if (onPixels) lines_.Move([&](DevicePoint point) { return DevicePoint{OnPixel(point.x), OnPixel(point.y)}; });
  const PaintedLines gathered = lines_.Take();
  double length = 0;
  const auto exact = [&](DevicePoint point) {
    const QPointF place = InPixels(point);
    return ExactPoint{place.x(), place.y()};
  };
  const auto measure = [&](ExactPoint from, ExactPoint to) {
    length += std::abs(to.x - from.x) + std::abs(to.y - from.y);
  };
  for (const auto& [from, to] : gathered.Steps) measure(exact(from), exact(to));
  std::vector<std::vector<ExactPoint>> longer;
  for (const std::vector<DevicePoint>& line : gathered.Longer) {
    std::vector<ExactPoint>& painted = longer.emplace_back();
    painted.reserve(line.size());
    for (const DevicePoint& point : line) painted.push_back(exact(point));
    for (std::size_t i = 1; i < painted.size(); ++i) measure(painted[i - 1], painted[i]);
  }
  // So much ink on so few pixels leaves no edges to be smoothed, and round ends cannot be told from flat ones.
  constexpr double kDense = 500'000;
  const PenLook look = Look();
  QPen pen = Pen();
  if (IsRaster() && length > kDense) {
    pen.setCapStyle(Qt::FlatCap);
    Painter().setRenderHint(QPainter::Antialiasing, look.Width <= 1);
  }
  Painter().setPen(pen);
  Painter().setBrush(Qt::NoBrush);
  Painter().setTransform(onPixels ? Shifted() : QTransform::fromTranslate(kMiddle, kMiddle));

  // The painter's own arithmetic does not reach the places far outside where curves may lead. With a rim, since a line
  // just outside reaches in by half of its width.
  const double rim = look.Width;
  const Sight sight{-rim, -rim, measures_.width() + rim, measures_.height() + rim};
  QList<QLineF> steps;
  for (const auto& [start, end] : gathered.Steps) {
    const QLineF step(InPixels(start), InPixels(end));
    const auto [enter, leave] = PartInSight(exact(start), exact(end), sight);
    if (enter < leave && !step.isNull()) steps.append({step.pointAt(enter), step.pointAt(leave)});
  }
  for (const std::vector<ExactPoint>& line : longer)
    for (const std::vector<ExactPoint>& part : PartsInSight(line, sight)) {
      const QPolygonF polygon = ToPolygon(part);
      if (polygon.size() == 2)
        steps.append({polygon[0], polygon[1]});
      else
        PaintLine(polygon);
    }
  Painter().drawLines(steps);
  Painter().setRenderHint(QPainter::Antialiasing);
}

void QtSurface::PaintLine(const QPolygonF& line) {
  QPen pen = Painter().pen();
  bool straight = true;
  for (qsizetype i = 1; i < line.size(); ++i)
    straight = straight && (line[i].x() == line[i - 1].x() || line[i].y() == line[i - 1].y());
  if (straight) {  // the corners of a frame are square
    QPen square = pen;
    square.setJoinStyle(Qt::MiterJoin);
    Painter().setPen(square);
  }
  // A wide line's outline takes time by the square of its corners, so one of many goes in pieces, which share a step so
  // that its ends are joins. There edges are a trace harder; at so many corners nobody sees it.
  constexpr qsizetype kManyCorners = 64, kPiece = 8;
  if (line.size() > 3 && line.front() == line.back()) {
    QPainterPath closed;
    closed.addPolygon(line);
    closed.closeSubpath();
    Painter().drawPath(closed);
  } else if (IsRaster() && pen.width() == 2 && line.size() > kManyCorners) {
    // Two pixels wide, single steps whose square ends overlap look the same at corners, in less than half the time.
    QPen square = pen;
    square.setCapStyle(Qt::SquareCap);
    Painter().setPen(square);
    QList<QLineF> steps;
    for (qsizetype i = 1; i < line.size(); ++i) steps.append({line[i - 1], line[i]});
    Painter().drawLines(steps);
    Painter().setPen(pen);
  } else if (IsRaster() && pen.width() > 1 && line.size() > kManyCorners) {
    for (qsizetype start = 0; start + 1 < line.size(); start += kPiece)
      Painter().drawPolyline(line.constData() + start, static_cast<int>(std::min(kPiece + 2, line.size() - start)));
  } else {
    Painter().drawPolyline(line);
  }
  if (straight) Painter().setPen(pen);
}

QTransform QtSurface::Shifted() const {
  const double shift = Look().Shift;
  return QTransform::fromTranslate(shift, shift);
}

QPen QtSurface::Pen() const {
  if (objects_.Pen().Style == kNoLine) return Qt::NoPen;
  const PenLook look = Look();
  const Qt::PenCapStyle cap = look.FlatEnds ? Qt::FlatCap : Qt::RoundCap;
  // A round corner of two pixels looks like any other, but takes its time.
  const Qt::PenJoinStyle join = IsRaster() && look.Width <= 2 ? Qt::BevelJoin : Qt::RoundJoin;
  return {ToColor(objects_.Pen().Colour), 1.0 * look.Width, Qt::SolidLine, cap, join};
}

void QtSurface::Rectangle(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) {
  PaintShape(Shape::kRectangle, std::array{DevicePoint{left, top}, DevicePoint{right, bottom}}, Outline::Pen,
             objects_.Brush());
}

void QtSurface::Ellipse(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) {
  PaintShape(Shape::kEllipse, std::array{DevicePoint{left, top}, DevicePoint{right, bottom}}, Outline::Pen,
             objects_.Brush());
}

void QtSurface::Polygon(std::span<const DevicePoint> points) {
  PixelCanvas* const canvas = facets_ ? Canvas() : nullptr;
  if (facets_ && !canvas && objects_.Pen().Style == kNoLine && objects_.Brush().Colour) {
    FlushLines();
    gatheredFacets_.emplace_back(points.begin(), points.end());
    facetColours_.push_back(*objects_.Brush().Colour);
    return;
  }
  if (!canvas) return PaintShape(Shape::kPolygon, points, Outline::Pen, objects_.Brush());
  Flush();
  const SurfacePen& pen = objects_.Pen();
  if (const auto colour = objects_.Brush().Colour) canvas->Fill(points, *colour);
  if (pen.Style == kNoLine) return;
  const PenLook look = Look();
  CanvasPen outline{1.0 * look.Width, pen.Colour};
  if (pen.Style != 0) outline = {outline.Width, outline.Colour, look.Pattern, look.FlatEnds};
  canvas->Outline(points, outline);
}

void QtSurface::SetFacets(bool joined) {
  Flush();
  stamps_.clear();
  facets_ = joined;
}

void QtSurface::ShadeTriangle(const std::array<DevicePoint, 3>& corners, const std::array<double, 3>& places,
                              std::span<const std::int32_t> ramp) {
  if (PixelCanvas* const canvas = Canvas()) {
    Flush();
    canvas->Shade(corners, places, ramp);
    return;
  }
  if (facets_) return DrawingSurface::ShadeTriangle(corners, places, ramp);
  const FacetScope facets(*this);
  DrawingSurface::ShadeTriangle(corners, places, ramp);
}

void QtSurface::PaintShape(Shape::Shapes kind, std::span<const DevicePoint> points, Outline outline,
                           const SurfaceBrush& fill) {
  Flush();
  if (points.empty()) return;
  Shape shape{kind, {}, outline, fill};
  // Facets meet at their exact places. Relative to its first point a marker is the same shape wherever it stands.
  const auto place = [&](DevicePoint point) { return facets_ ? InPixels(point) : QPointF(OnPixels(point)); };
  const QPointF at = place(points[0]);
  for (const DevicePoint& point : points) {
    const QPointF from = place(point) - at;
    shape.Points.push_back({from.x(), from.y()});
  }
  if (const Stamp* stamp = StampOf(shape)) {
    Painter().setTransform({});
    Painter().drawImage(at + stamp->Bounds.topLeft(), stamp->Picture);
    return;
  }
  const QTransform shift = facets_ ? QTransform::fromTranslate(kMiddle, kMiddle) : Shifted();
  Painter().setTransform(QTransform::fromTranslate(at.x(), at.y()) * shift);
  PaintAtOrigin(Painter(), shape);
}

void QtSurface::PaintAtOrigin(QPainter& painter, const Shape& shape) const {
  QPen pen = shape.Border == Outline::Pen ? Pen() : QPen(Qt::NoPen);
  if (shape.Kind == Shape::kRectangle) pen.setJoinStyle(Qt::MiterJoin);
  if (shape.Kind == Shape::kPolygon && pen.style() != Qt::NoPen) {
    QList<qreal> dashes;  // in widths of the pen
    for (const double element : Look().Pattern.Elements()) dashes.append(element / pen.widthF());
    if (!dashes.isEmpty()) pen.setDashPattern(dashes);
  }
  painter.setPen(pen);
  painter.setBrush(ToBrush(shape.Fill));
  const QPolygonF points = ToPolygon(shape.Points);
  if (shape.Kind == Shape::kPolygon)
    painter.drawPolygon(points);
  else if (shape.Kind == Shape::kEllipse)
    painter.drawEllipse(QRectF(points.front(), points.back()));
  else
    painter.drawRect(QRectF(points.front(), points.back()));
}

// Of a small shape that comes again, as markers do by the thousand, the picture is kept.
const QtSurface::Stamp* QtSurface::StampOf(const Shape& shape) {
  constexpr std::size_t kMostStamps = 8;
  constexpr int kLargest = 64;
  if (!IsRaster() || facets_) return nullptr;
  const auto known = std::find_if(stamps_.begin(), stamps_.end(), [&](const Stamp& s) { return s.Source == shape; });
  if (known == stamps_.end()) {
    const int rim = Look().Width + 2;  // outline and smoothing reach beyond the shape
    const QRect bounds = ToPolygon(shape.Points).boundingRect().toAlignedRect().adjusted(-rim, -rim, rim, rim);
    if (bounds.width() > kLargest || bounds.height() > kLargest) return nullptr;
    if (stamps_.size() == kMostStamps) stamps_.clear();
    // The picture is made when the shape comes a second time, since most shapes never do.
    stamps_.push_back({shape, bounds, {}});
    return nullptr;
  }
  if (known->Picture.isNull()) {
    known->Picture = QImage(known->Bounds.size(), QImage::Format_ARGB32_Premultiplied);
    known->Picture.fill(Qt::transparent);
    QPainter painter(&known->Picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(Shifted() * QTransform::fromTranslate(-known->Bounds.x(), -known->Bounds.y()));
    PaintAtOrigin(painter, shape);
  }
  return &*known;
}

SurfaceHandle QtSurface::CreatePolygonRgn(std::span<const DevicePoint> points, int) {
  return objects_.Add(SurfaceRegion{{points.begin(), points.end()}});
}

SurfaceHandle QtSurface::CreateRectRgn(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) {
  return objects_.Add(SurfaceRegion{{{left, top}, {right, bottom}}, true});
}

void QtSurface::FillRgn(SurfaceHandle region, SurfaceHandle brush) {
  const SurfaceRegion& area = objects_.Region(region);
  PaintShape(area.Rectangular ? Shape::kRectangle : Shape::kPolygon, area.Corners, Outline::None,
             objects_.Brush(brush));
}

void QtSurface::SelectClipRgn(SurfaceHandle region) {
  Flush();
  clipsToPath_ = false;
  if (region == 0) {
    Painter().setClipping(false);
    if (canvas_) canvas_->LiftClip();
    return;
  }
  Painter().setTransform({});
  const SurfaceRegion& shape = objects_.Region(region);
  if (!shape.Rectangular) {
    clipsToPath_ = true;
    QPainterPath path;
    QPolygonF corners;
    for (const DevicePoint& corner : shape.Corners) corners.append(InPixels(corner));
    path.addPolygon(corners);
    Painter().setClipPath(path);
    return;
  }
  // Pixels through which the edges run are within.
  const QPoint from = OnPixels(shape.Corners[0]), end = OnPixels(shape.Corners[1]) + QPoint(1, 1);
  Painter().setClipRect(QRectF(from, end));
  if (canvas_) canvas_->SetClip({from.x(), from.y(), end.x(), end.y()});
}

void QtSurface::SetBkMode(int mode) {
  Flush();
  constexpr int kTransparent = 1;
  Painter().setBackgroundMode(mode == kTransparent ? Qt::TransparentMode : Qt::OpaqueMode);
}

const QFont& QtSurface::Font() {
  if (fontIsCurrent_) return font_;
  const LogicalFont& logical = objects_.Font();
  font_ = QFont(ToText(logical.FaceName));
  font_.setPixelSize(std::max(qRound(1.0 * std::abs(logical.Height) / units_), 1));
  font_.setWeight(static_cast<QFont::Weight>(logical.Weight));
  font_.setItalic(logical.Italic);
  font_.setUnderline(logical.Underline);
  font_.setStrikeOut(logical.StrikeOut);
  fontIsCurrent_ = true;
  return font_;
}

void QtSurface::TextOutA(std::int32_t x, std::int32_t y, std::string_view text) {
  Flush();
  const QFont& font = Font();
  const QPoint at = OnPixels({x, y});
  QTransform turned;
  turned.translate(at.x(), at.y());
  // Tenths of a degree against the clock, where the painter turns with it.
  turned.rotate(-objects_.Font().Escapement / 10.0);
  Painter().setTransform(turned);
  Painter().setFont(font);
  Painter().setPen(ToColor(textColour_));
  Painter().drawText(QPointF(0, QFontMetrics(font, &measures_).ascent()), ToText(text));
}

DeviceExtent QtSurface::GetTextExtentPoint32A(std::string_view text) {
  // Measured for the device, whose resolution need not be the screen's.
  const QFontMetrics metrics(Font(), &measures_);
  return {metrics.horizontalAdvance(ToText(text)) * units_, metrics.height() * units_};
}

std::int32_t QtSurface::GetTextAscent() { return QFontMetrics(Font(), &measures_).ascent() * units_; }

void QtSurface::SetMapMode(int mode) {
  mapMode_ = mode;
  ApplyMap();
}

void QtSurface::SetWindowOrgEx(std::int32_t x, std::int32_t y) {
  windowOrigin_ = {x, y};
  ApplyMap();
}

void QtSurface::SetWindowExtEx(std::int32_t cx, std::int32_t cy) {
  windowExtent_ = {cx, cy};
  ApplyMap();
}

void QtSurface::SetViewportOrgEx(std::int32_t x, std::int32_t y) {
  viewportOrigin_ = {x, y};
  ApplyMap();
}

void QtSurface::SetViewportExtEx(std::int32_t cx, std::int32_t cy) {
  viewportExtent_ = {cx, cy};
  ApplyMap();
}

void QtSurface::ApplyMap() {
  Flush();
  constexpr int kAnisotropic = 8;
  scale_ = QPointF(1, 1) / units_;
  origin_ = {};
  if (windowExtent_.cx == 0 || windowExtent_.cy == 0) return;
  if (mapMode_ == kAnisotropic)
    scale_ =
        QPointF(scale_.x() * viewportExtent_.cx / windowExtent_.cx, scale_.y() * viewportExtent_.cy / windowExtent_.cy);
  origin_ = QPointF(viewportOrigin_.x, viewportOrigin_.y) / units_ -
            QPointF(windowOrigin_.x * scale_.x(), windowOrigin_.y * scale_.y());
}

}  // namespace quorvex
