#include "drawing/MetafileSurface.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

#include "core/NumberText.h"
#include "core/TextEncoding.h"
#include "drawing/FacetReach.h"

namespace quorvex {
namespace {

constexpr std::uint32_t kCopy = 5;  // of clips: instead of the one before

// The file format's own objects, by the handles of the surface's: black pen, white brush, system font, hollow brush.
constexpr std::uint32_t kStock[] = {0x80000007, 0x80000000, 0x8000000D, 0x80000005};

std::uint32_t Number(std::size_t count) { return static_cast<std::uint32_t>(count); }

// A name of at most 31 units and zeros up to 32.
std::u16string FaceName(const LogicalFont& font) {
  constexpr std::size_t kRoom = 32;
  std::u16string name = EncodeUtf16(DecodeText(font.FaceName));
  name.resize(std::min(name.size(), kRoom - 1));
  name.resize(kRoom);
  return name;
}

EmfRect Around(std::span<const DevicePoint> points) {
  const auto across = std::ranges::minmax(points, {}, &DevicePoint::x),
             down = std::ranges::minmax(points, {}, &DevicePoint::y);
  return {across.min.x, down.min.y, across.max.x, down.max.y};
}

}  // namespace

MetafileSurface::MetafileSurface(DrawingSurface& target, DeviceExtent frame, const std::string& description)
    : PictureSurface(target),
      writer_({{target.GetDeviceCaps(DeviceCap::HORZRES), target.GetDeviceCaps(DeviceCap::VERTRES)},
               {target.GetDeviceCaps(DeviceCap::HORZSIZE), target.GetDeviceCaps(DeviceCap::VERTSIZE)},
               frame,
               description}),
      lines_(target.UnitsPerPixel()) {}

std::uint32_t MetafileSurface::PlaceOf(SurfaceHandle handle) {
  constexpr SurfaceHandle kStockCount = std::size(kStock);
  if (handle <= kStockCount) return kStock[handle - 1];
  writer_.UseHandles(handle - kStockCount);
  return handle - kStockCount;
}

SurfaceHandle MetafileSurface::CreatePen(int style, std::int32_t width, std::int32_t colour) {
  const SurfaceHandle pen = PictureSurface::CreatePen(style, width, colour);
  if (style == kNoLine) {
    constexpr std::uint32_t kNull = 5;
    writer_.Record(EmfRecord::CreatePen, PlaceOf(pen), kNull, DevicePoint{}, colour);
    return pen;
  }
  // The thinnest lines end where they are told to, so that their patterns keep their gaps.
  constexpr std::uint32_t kGeometric = 0x10000, kFlatEnds = 0x200, kSolid = 0, kNothing = 0;
  writer_.Record(EmfRecord::ExtCreatePen, PlaceOf(pen), kNothing, kNothing, kNothing, kNothing,
                 width <= PenScale() ? kGeometric | kFlatEnds : kGeometric, width, kSolid, colour, kNothing, kNothing);
  return pen;
}

SurfaceHandle MetafileSurface::CreateSolidBrush(std::int32_t colour) {
  const SurfaceHandle brush = PictureSurface::CreateSolidBrush(colour);
  constexpr std::uint32_t kSolid = 0, kNoHatch = 0;
  writer_.Record(EmfRecord::CreateBrushIndirect, PlaceOf(brush), kSolid, colour, kNoHatch);
  return brush;
}

SurfaceHandle MetafileSurface::CreateFontIndirectA(const LogicalFont& font) {
  const SurfaceHandle handle = PictureSurface::CreateFontIndirectA(font);
  const auto byte = [](int value) { return static_cast<std::uint8_t>(value); };
  constexpr std::int32_t kAnyWidth = 0;
  constexpr std::uint8_t kAnyCharacters = 1, kDefault = 0;
  // Behind the name there is room for what a font's maker calls it.
  constexpr std::size_t kMore = 320 - 92;
  const std::array<std::uint32_t, kMore / sizeof(std::uint32_t)> nothing{};
  writer_.Record(EmfRecord::ExtCreateFontIndirectW, PlaceOf(handle), font.Height, kAnyWidth, font.Escapement,
                 font.Escapement, font.Weight, byte(font.Italic), byte(font.Underline), byte(font.StrikeOut),
                 kAnyCharacters, kDefault, kDefault, byte(font.Quality), kDefault, std::u16string_view(FaceName(font)),
                 std::span<const std::uint32_t>(nothing));
  return handle;
}

SurfaceHandle MetafileSurface::SelectObject(SurfaceHandle object) {
  FlushLines();  // in the old pen
  writer_.Record(EmfRecord::SelectObject, PlaceOf(object));
  return PictureSurface::SelectObject(object);
}

void MetafileSurface::DeleteObject(SurfaceHandle object) {
  if (!Objects().IsRegion(object)) writer_.Record(EmfRecord::DeleteObject, PlaceOf(object));
  PictureSurface::DeleteObject(object);
}

DevicePoint MetafileSurface::Exact(DevicePoint point) const {
  const std::int32_t half = UnitsPerPixel() / 2;
  return {point.x + half, point.y + half};
}

DevicePoint MetafileSurface::OnPixel(DevicePoint point, double shift) const {
  const auto part = static_cast<std::int32_t>(shift * UnitsPerPixel());
  return {PictureSurface::OnPixel(point.x) + part, PictureSurface::OnPixel(point.y) + part};
}

EmfRect MetafileSurface::BoxOnPixels(std::int32_t left, std::int32_t top, std::int32_t right,
                                     std::int32_t bottom) const {
  const double shift = Look().Shift;
  const DevicePoint from = OnPixel({left, top}, shift), to = OnPixel({right, bottom}, shift);
  return {from.x, from.y, to.x, to.y};
}

void MetafileSurface::Flush() {
  FlushLines();
  FlushFacets();
}

void MetafileSurface::FlushFacets() {
  if (gatheredFacets_.empty()) return;
  const auto facets = ReachUnderLater(std::exchange(gatheredFacets_, {}));
  const std::vector<std::int32_t> colours = std::exchange(facetColours_, {});
  const SelectedObject none(*this, CreatePen(kNoLine, 0, 0));
  for (std::size_t i = 0; i < facets.size();) {
    const std::int32_t colour = colours[i];
    const SelectedObject brush(*this, CreateSolidBrush(colour));
    for (; i < facets.size() && colours[i] == colour; ++i) WritePolygon(facets[i]);
  }
}

void MetafileSurface::SetFacets(bool joined) {
  Flush();
  facets_ = joined;
}

void MetafileSurface::FlushLines() {
  if (lines_.Empty()) return;
  const bool onPixels = lines_.RunsAlongOrDown();
  const double shift = Look().Shift;
  lines_.Move([&](DevicePoint point) { return onPixels ? OnPixel(point, shift) : Exact(point); });
  WriteLines(lines_.Take());
}

void MetafileSurface::WriteLines(const PaintedLines& gathered) {
  for (const std::vector<DevicePoint>& line : gathered.Longer)
    writer_.Record(EmfRecord::Polyline, Around(line), Number(line.size()), std::span<const DevicePoint>(line));
  if (gathered.Steps.empty()) return;
  std::vector<DevicePoint> points;
  for (const auto& step : gathered.Steps) points.insert(points.end(), step.begin(), step.end());
  const std::vector<std::uint32_t> counts(gathered.Steps.size(), 2);
  writer_.Record(EmfRecord::PolyPolyline, Around(points), Number(counts.size()), Number(points.size()),
                 std::span<const std::uint32_t>(counts), std::span<const DevicePoint>(points));
}

void MetafileSurface::Rectangle(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) {
  Flush();
  writer_.Record(EmfRecord::Rectangle, BoxOnPixels(left, top, right, bottom));
}

void MetafileSurface::Ellipse(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) {
  Flush();
  writer_.Record(EmfRecord::Ellipse, BoxOnPixels(left, top, right, bottom));
}

void MetafileSurface::WritePolygon(std::span<const DevicePoint> points) {
  writer_.Record(EmfRecord::Polygon, Around(points), Number(points.size()), points);
}

LinePattern MetafileSurface::Pattern() const {
  const std::int32_t scale = PenScale();
  const SurfacePen& pen = Objects().Pen();
  return {pen.Style, RoundToInt32(1.0 * pen.Width / scale), 1.0 * scale};
}

void MetafileSurface::WriteStrokes(std::span<const DevicePoint> polygon) {
  const double rim = Objects().Pen().Width;
  PatternWalk walk(Pattern(), {-rim, -rim, ScaleWidth() + rim, ScaleHeight() + rim});
  GatheredLines strokes(UnitsPerPixel());
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const DevicePoint& start = polygon[i];
    const DevicePoint& end = polygon[i + 1 < polygon.size() ? i + 1 : 0];
    walk.Segment({1.0 * start.x, 1.0 * start.y}, {1.0 * end.x, 1.0 * end.y}, [&](ExactPoint from, ExactPoint to) {
      strokes.MoveTo({RoundToInt32(from.x), RoundToInt32(from.y)});
      strokes.LineTo({RoundToInt32(to.x), RoundToInt32(to.y)});
    });
  }
  if (!strokes.Empty()) WriteLines(strokes.Take());
}

void MetafileSurface::Polygon(std::span<const DevicePoint> corners) {
  if (corners.empty()) return;
  const double shift = Look().Shift;
  std::vector<DevicePoint> points;  // facets meet at their exact places
  for (const DevicePoint& corner : corners) points.push_back(facets_ ? Exact(corner) : OnPixel(corner, shift));
  const std::optional<std::int32_t> fill = Objects().Brush().Colour;
  const bool outlined = Objects().Pen().Style != kNoLine;
  if (facets_ && !outlined && fill) {
    FlushLines();
    gatheredFacets_.push_back(std::move(points));
    facetColours_.push_back(*fill);
    return;
  }
  Flush();
  if (!outlined || Pattern().Elements().empty()) return WritePolygon(points);
  if (fill) {
    const SelectedObject none(*this, CreatePen(kNoLine, 0, 0));
    WritePolygon(points);
  }
  WriteStrokes(points);
}

void MetafileSurface::FillRgn(SurfaceHandle region, SurfaceHandle brush) {
  const SurfaceRegion& area = Objects().Region(region);
  const bool rectangular = area.Rectangular;
  const double shift = Look().Shift;
  std::vector<DevicePoint> corners;
  for (const DevicePoint& corner : area.Corners) corners.push_back(OnPixel(corner, shift));
  const SelectedObject none(*this, CreatePen(kNoLine, 0, 0));
  const Selection filling(*this, brush);
  if (rectangular)
    writer_.Record(EmfRecord::Rectangle, EmfRect{corners[0].x, corners[0].y, corners[1].x, corners[1].y});
  else if (!corners.empty())
    WritePolygon(corners);
}

void MetafileSurface::SelectClipRgn(SurfaceHandle region) {
  Flush();
  // No region at all: what was confined is so no more.
  constexpr std::uint32_t kNoRegion = 0;
  writer_.Record(EmfRecord::ExtSelectClipRgn, kNoRegion, kCopy);
  if (region == 0) return;
  const SurfaceRegion& shape = Objects().Region(region);
  if (shape.Rectangular) {
    // Pixels through which the edges run are within.
    const DevicePoint from = OnPixel(shape.Corners[0], 0), to = OnPixel(shape.Corners[1], 1);
    writer_.Record(EmfRecord::IntersectClipRect, EmfRect{from.x, from.y, to.x, to.y});
    return;
  }
  writer_.Record(EmfRecord::BeginPath);
  std::vector<DevicePoint> corners;
  for (const DevicePoint& corner : shape.Corners) corners.push_back(Exact(corner));
  WritePolygon(corners);
  writer_.Record(EmfRecord::EndPath);
  writer_.Record(EmfRecord::SelectClipPath, kCopy);
}

void MetafileSurface::SetBkMode(int mode) {
  Flush();
  writer_.Record(EmfRecord::SetBkMode, mode);
}

void MetafileSurface::SetTextColor(std::int32_t colour) {
  Flush();
  writer_.Record(EmfRecord::SetTextColor, colour);
}

void MetafileSurface::TextOutA(std::int32_t left, std::int32_t top, std::string_view bytes) {
  Flush();
  const auto [x, y] = OnPixel({left, top}, 0);
  // Each character's way to the next, as measured, so that no reader's font moves them.
  const std::string text = DecodeText(bytes);
  std::u16string units;
  std::vector<std::uint32_t> advances;
  DeviceExtent cell;
  for (std::size_t end = 0; end < text.size();) {
    const std::string character = FirstCharacters(std::string_view(text).substr(end), 1);
    end += character.size();
    const DeviceExtent grown = GetTextExtentPoint32A(std::string_view(text).substr(0, end));
    units += EncodeUtf16(character);
    advances.push_back(static_cast<std::uint32_t>(grown.cx - cell.cx));
    advances.resize(units.size());
    cell = grown;
  }
  if (units.empty()) return;

  const double angle = Objects().Font().Escapement * std::numbers::pi / 1800, along = std::cos(angle),
               up = std::sin(angle);
  std::vector<DevicePoint> corners;
  for (const double right : {0, cell.cx})
    for (const double below : {0, cell.cy})
      corners.push_back({RoundToInt32(x + right * along + below * up), RoundToInt32(y - right * up + below * along)});

  constexpr std::uint32_t kCompatible = 1, kNoOptions = 0, kTextAt = 76, kUnitBytes = 2, kWord = 4;
  const std::uint32_t advancesAt = (kTextAt + kUnitBytes * Number(units.size()) + kWord - 1) / kWord * kWord;
  // Hundredths of a millimetre to a unit.
  const auto scale = [](std::int32_t millimetres, std::int32_t size) {
    return static_cast<float>(100.0 * millimetres / size);
  };
  const std::u16string_view padding(u"\0", units.size() % 2);
  writer_.Record(EmfRecord::ExtTextOutW, Around(corners), kCompatible,
                 scale(GetDeviceCaps(DeviceCap::HORZSIZE), GetDeviceCaps(DeviceCap::HORZRES)),
                 scale(GetDeviceCaps(DeviceCap::VERTSIZE), GetDeviceCaps(DeviceCap::VERTRES)), DevicePoint{x, y},
                 Number(units.size()), kTextAt, kNoOptions, EmfRect{}, advancesAt, std::u16string_view(units), padding,
                 std::span<const std::uint32_t>(advances));
  // Inkscape makes a paragraph of texts that follow each other, and lays it out anew; this keeps them apart.
  writer_.Record(EmfRecord::MoveToEx, DevicePoint{x, y});
}

SurfaceHandle MetafileSurface::CloseEnhMetaFile() {
  constexpr SurfaceHandle kMetafile = 1;
  Flush();
  metafile_ = writer_.Finish();
  return kMetafile;
}

}  // namespace quorvex
