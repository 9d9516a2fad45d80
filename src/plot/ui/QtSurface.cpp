#include "plot/ui/QtSurface.h"

#include <QFontMetrics>
#include <QPaintEngine>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <tuple>

#include "core/NumberText.h"

namespace quorvex {
namespace {

constexpr double kMillimetresPerInch = 25.4, kTwipsPerInch = 1440;

QColor ToColor(std::int32_t colour) { return {colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF}; }

QBrush ToBrush(const SurfaceBrush& brush) {
  return brush.Colour ? QBrush(ToColor(*brush.Colour)) : QBrush(Qt::NoBrush);
}

QRectF ToRectangle(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) {
  return {QPointF(left, top), QPointF(right, bottom)};
}

QPolygonF ToPolygon(std::span<const DevicePoint> points) {
  QPolygonF polygon;
  polygon.reserve(static_cast<qsizetype>(points.size()));
  for (const DevicePoint& point : points) polygon.append(QPointF(point.x, point.y));
  return polygon;
}

QString ToText(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

// Of several points in a row that share x, all but the first, the lowest, the highest and the last; the same with y.
// The line covers the very same places, in a fraction of the time where a curve has more points than the device pixels.
std::vector<DevicePoint> WithoutRetraced(std::span<const DevicePoint> line, std::int32_t DevicePoint::*same,
                                         std::int32_t DevicePoint::*other) {
  std::vector<DevicePoint> kept;
  for (std::size_t first = 0, end = 0; first < line.size(); first = end) {
    std::size_t low = first, high = first;
    for (end = first; end < line.size() && line[end].*same == line[first].*same; ++end) {
      if (line[end].*other < line[low].*other) low = end;
      if (line[end].*other > line[high].*other) high = end;
    }
    for (const std::size_t i : {first, std::min(low, high), std::max(low, high), end - 1})
      if (kept.empty() || kept.back() != line[i]) kept.push_back(line[i]);
  }
  return kept;
}

// Joins lines that run along one pixel column or row and follow each other there, as the dashes of a noisy curve do by
// the thousand: one line for each stretch that they cover together.
class StraightLines {
 public:
  explicit StraightLines(std::vector<std::vector<DevicePoint>>& lines) : lines_(lines) {}

  // Takes a line that is straight so, and leaves any other. One that leads nowhere makes no dot.
  bool Take(std::span<const DevicePoint> line) {
    const auto shares = [&](std::int32_t DevicePoint::*coordinate) {
      return std::all_of(line.begin(), line.end(),
                         [&](const DevicePoint& point) { return point.*coordinate == line[0].*coordinate; });
    };
    const bool column = shares(&DevicePoint::x);
    if (!column && !shares(&DevicePoint::y)) return false;
    const std::int32_t at = column ? line[0].x : line[0].y;
    if (column != column_ || at != at_) Finish();
    column_ = column;
    at_ = at;
    const auto along = column ? &DevicePoint::y : &DevicePoint::x;
    const auto [low, high] = std::minmax_element(
        line.begin(), line.end(), [&](const DevicePoint& a, const DevicePoint& b) { return a.*along < b.*along; });
    if ((*low).*along < (*high).*along) stretches_.push_back({(*low).*along, (*high).*along});
    return true;
  }

  void Finish() {
    std::sort(stretches_.begin(), stretches_.end());
    for (std::size_t i = 0; i < stretches_.size();) {
      auto [low, high] = stretches_[i];
      while (++i < stretches_.size() && stretches_[i].first <= high) high = std::max(high, stretches_[i].second);
      lines_.push_back(column_ ? std::vector<DevicePoint>{{at_, low}, {at_, high}}
                               : std::vector<DevicePoint>{{low, at_}, {high, at_}});
    }
    stretches_.clear();
  }

 private:
  std::vector<std::vector<DevicePoint>>& lines_;
  std::vector<std::pair<std::int32_t, std::int32_t>> stretches_;  // from and to, all in one column or row:
  bool column_ = false;
  std::int32_t at_ = 0;
};

// What of a line comes into a rectangle. The painter's own arithmetic does not reach the places far outside where
// curves may lead.
QList<QPolygonF> PartsInSight(std::span<const DevicePoint> line, const QRectF& sight) {
  QList<QPolygonF> parts;
  bool open = false;  // the last part goes on
  for (std::size_t i = 1; i < line.size(); ++i) {
    const QPointF from(line[i - 1].x, line[i - 1].y), step = QPointF(line[i].x, line[i].y) - from;
    double enter = 0, leave = 1;  // in fractions of the step
    const auto confine = [&](double start, double length, double low, double high) {
      if (length == 0) {
        if (start < low || start > high) leave = -1;
        return;
      }
      const double a = (low - start) / length, b = (high - start) / length;
      enter = std::max(enter, std::min(a, b));
      leave = std::min(leave, std::max(a, b));
    };
    confine(from.x(), step.x(), sight.left(), sight.right());
    confine(from.y(), step.y(), sight.top(), sight.bottom());
    if (enter > leave) {
      open = false;
      continue;
    }
    if (!open || enter > 0) parts.append(QPolygonF{from + enter * step});
    parts.back().append(from + leave * step);
    open = leave == 1;
  }
  return parts;
}

}  // namespace

QtSurface::QtSurface(QPaintDevice& device, Device kind) : device_(device), kind_(kind) {
  windowExtent_ = viewportExtent_ = {device.width(), device.height()};
}

QtSurface::~QtSurface() { Flush(); }

// A printer that nothing is drawn on has no page to print.
QPainter& QtSurface::Painter() {
  if (!painter_.isActive()) {
    painter_.begin(&device_);
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setBackgroundMode(Qt::OpaqueMode);
  }
  return painter_;
}

std::int32_t QtSurface::GetDeviceCaps(DeviceCap index) const {
  switch (index) {
    case DeviceCap::HORZSIZE:
      return RoundToInt32(device_.width() * kMillimetresPerInch / device_.logicalDpiX());
    case DeviceCap::VERTSIZE:
      return RoundToInt32(device_.height() * kMillimetresPerInch / device_.logicalDpiY());
    case DeviceCap::HORZRES:
    case DeviceCap::PHYSICALWIDTH:
      return device_.width();
    case DeviceCap::VERTRES:
    case DeviceCap::PHYSICALHEIGHT:
      return device_.height();
    case DeviceCap::LOGPIXELSY:
      return device_.logicalDpiY();
  }
  return 0;
}

double QtSurface::TwipsPerPixelX() const { return kTwipsPerInch / device_.logicalDpiX(); }
double QtSurface::TwipsPerPixelY() const { return kTwipsPerInch / device_.logicalDpiY(); }

SurfaceHandle QtSurface::CreatePen(int, std::int32_t width, std::int32_t colour) {
  return objects_.Add(SurfacePen{width, colour});
}

SurfaceHandle QtSurface::CreateSolidBrush(std::int32_t colour) { return objects_.Add(SurfaceBrush{colour}); }

SurfaceHandle QtSurface::SelectObject(SurfaceHandle object) {
  Flush();
  fontIsCurrent_ = false;
  stamps_.clear();
  return objects_.Select(object);
}

void QtSurface::MoveToEx(std::int32_t x, std::int32_t y) { position_ = {x, y}; }

void QtSurface::LineTo(std::int32_t x, std::int32_t y) {
  if (points_.empty() || points_.back() != position_) {
    starts_.push_back(points_.size());
    points_.push_back(position_);
  }
  position_ = {x, y};
  points_.push_back(position_);
}

// The lines gathered, as they are painted: none longer than it need be to cover its places.
std::vector<QtSurface::Line> QtSurface::TakeLines() {
  std::vector<Line> lines;
  StraightLines straight(lines);
  for (std::size_t i = 0; i < starts_.size(); ++i) {
    const std::size_t end = i + 1 < starts_.size() ? starts_[i + 1] : points_.size();
    const std::span<const DevicePoint> line = std::span(points_).subspan(starts_[i], end - starts_[i]);
    if (straight.Take(line)) continue;
    if (line.size() == 2)
      lines.push_back({line[0], line[1]});
    else
      lines.push_back(
          WithoutRetraced(WithoutRetraced(line, &DevicePoint::x, &DevicePoint::y), &DevicePoint::y, &DevicePoint::x));
  }
  straight.Finish();
  points_.clear();
  starts_.clear();
  return lines;
}

void QtSurface::Flush() {
  if (points_.empty()) return;
  const std::vector<Line> lines = TakeLines();
  double length = 0;
  for (const Line& line : lines) {
    for (std::size_t i = 1; i < line.size(); ++i)
      length += std::abs(1.0 * line[i].x - line[i - 1].x) + std::abs(1.0 * line[i].y - line[i - 1].y);
  }
  // So much ink on so few pixels leaves no edges to be smoothed, and round ends cannot be told from flat ones.
  constexpr double kDense = 500'000;
  QPen pen = Pen();
  if (IsRaster() && length > kDense) {
    pen.setCapStyle(Qt::FlatCap);
    Painter().setRenderHint(QPainter::Antialiasing, objects_.Pen().Width <= 1);
  }
  Painter().setPen(pen);
  Painter().setBrush(Qt::NoBrush);
  Painter().setTransform(Shifted());

  const double width = objects_.Pen().Width;
  const QRectF sight = map_.inverted()
                           .mapRect(QRectF(0, 0, device_.width(), device_.height()))
                           .adjusted(-width, -width, width, width)
                           .toAlignedRect();
  QList<QLineF> single;
  for (const Line& line : lines)
    for (const QPolygonF& part : PartsInSight(line, sight))
      if (part.size() == 2)
        single.append({part[0], part[1]});
      else
        PaintLine(part);
  Painter().drawLines(single);
  Painter().setRenderHint(QPainter::Antialiasing);
}

bool QtSurface::IsRaster() const { return device_.paintEngine()->type() == QPaintEngine::Raster; }

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

// A place is the middle of its pixel, but lines of an even width have their middle between two.
QTransform QtSurface::Shifted() const {
  const double half = objects_.Pen().Width % 2 == 0 ? 0 : 0.5;
  return map_ * QTransform::fromTranslate(half, half);
}

QPen QtSurface::Pen() const {
  const int width = std::max(objects_.Pen().Width, 1);
  // The thinnest lines end where they are told to, so that their patterns keep their gaps.
  const Qt::PenCapStyle cap = width <= PenScale() ? Qt::FlatCap : Qt::RoundCap;
  // A round corner of two pixels looks like any other, but takes its time.
  const Qt::PenJoinStyle join = IsRaster() && width <= 2 ? Qt::BevelJoin : Qt::RoundJoin;
  return {ToColor(objects_.Pen().Colour), 1.0 * width, Qt::SolidLine, cap, join};
}

void QtSurface::Rectangle(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) {
  PaintShape({Shape::kRectangle, {{left, top}, {right, bottom}}, true, objects_.Brush()});
}

void QtSurface::Ellipse(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) {
  PaintShape({Shape::kEllipse, {{left, top}, {right, bottom}}, true, objects_.Brush()});
}

void QtSurface::Polygon(std::span<const DevicePoint> points) {
  PaintShape({Shape::kPolygon, {points.begin(), points.end()}, true, objects_.Brush()});
}

void QtSurface::PaintShape(Shape shape) {
  Flush();
  if (shape.Points.empty()) return;
  const DevicePoint at = shape.Points[0];
  for (DevicePoint& point : shape.Points) point = {point.x - at.x, point.y - at.y};
  if (const Stamp* stamp = StampOf(shape)) {
    Painter().setTransform({});
    Painter().drawImage(at.x + stamp->Corner.x(), at.y + stamp->Corner.y(), stamp->Picture);
    return;
  }
  Painter().setTransform(QTransform::fromTranslate(at.x, at.y) * Shifted());
  PaintAtOrigin(Painter(), shape);
}

void QtSurface::PaintAtOrigin(QPainter& painter, const Shape& shape) const {
  QPen pen = shape.Outlined ? Pen() : QPen(Qt::NoPen);
  if (shape.Kind == Shape::kRectangle) pen.setJoinStyle(Qt::MiterJoin);
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
  const int rim = objects_.Pen().Width + 2;  // outline and smoothing reach beyond the shape
  const QRect bounds = ToPolygon(shape.Points).boundingRect().toAlignedRect().adjusted(-rim, -rim, rim, rim);
  if (!IsRaster() || !map_.isIdentity() || bounds.width() > kLargest || bounds.height() > kLargest) return nullptr;
  const auto known = std::find_if(stamps_.begin(), stamps_.end(), [&](const Stamp& s) { return s.Of == shape; });
  if (known == stamps_.end()) {
    if (stamps_.size() == kMostStamps) stamps_.clear();
    stamps_.push_back({shape, bounds.topLeft(), {}});
    return nullptr;
  }
  if (known->Picture.isNull()) {
    known->Picture = QImage(bounds.size(), QImage::Format_ARGB32_Premultiplied);
    known->Picture.fill(Qt::transparent);
    QPainter painter(&known->Picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(Shifted() * QTransform::fromTranslate(-bounds.x(), -bounds.y()));
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
  PaintShape({area.Rectangular ? Shape::kRectangle : Shape::kPolygon, area.Corners, false, objects_.Brush(brush)});
}

void QtSurface::SelectClipRgn(SurfaceHandle region) {
  Flush();
  if (region == 0) {
    Painter().setClipping(false);
    return;
  }
  Painter().setTransform(map_);
  const SurfaceRegion& shape = objects_.Region(region);
  if (!shape.Rectangular) {
    QPainterPath path;
    path.addPolygon(ToPolygon(shape.Corners));
    Painter().setClipPath(path);
    return;
  }
  // Pixels through which the edges run are within.
  const auto& [upperLeft, lowerRight] = std::tie(shape.Corners[0], shape.Corners[1]);
  Painter().setClipRect(ToRectangle(upperLeft.x, upperLeft.y, lowerRight.x, lowerRight.y).adjusted(0, 0, 1, 1));
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
  font_.setPixelSize(std::max(std::abs(logical.Height), 1));
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
  QTransform turned;
  turned.translate(x, y);
  turned.rotate(-objects_.Font().Escapement / 10.0);
  Painter().setTransform(turned * map_);
  Painter().setFont(font);
  Painter().setPen(ToColor(textColour_));
  Painter().drawText(QPointF(0, QFontMetrics(font, &device_).ascent()), ToText(text));
}

DeviceExtent QtSurface::GetTextExtentPoint32A(std::string_view text) {
  const QFontMetrics metrics(Font(), &device_);
  return {metrics.horizontalAdvance(ToText(text)), metrics.height()};
}

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
  map_ = {};
  if (windowExtent_.cx == 0 || windowExtent_.cy == 0) return;
  map_.translate(viewportOrigin_.x, viewportOrigin_.y);
  if (mapMode_ == kAnisotropic)
    map_.scale(viewportExtent_.cx / static_cast<double>(windowExtent_.cx),
               viewportExtent_.cy / static_cast<double>(windowExtent_.cy));
  map_.translate(-windowOrigin_.x, -windowOrigin_.y);
}

}  // namespace quorvex
