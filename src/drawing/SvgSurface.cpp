#include "drawing/SvgSurface.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "core/NumberText.h"
#include "core/XmlText.h"
#include "drawing/FacetReach.h"
#include "drawing/SvgText.h"

namespace quorvex {
namespace {

// Stands in the body for what sets the names of one document apart from those of others in the same page. No text holds
// it, since no XML may.
constexpr char kId = '\x01';
constexpr double kMiddle = 0.5;  // of a pixel

std::string Attribute(const char* name, const std::string& value) {
  return ' ' + std::string(name) + "=\"" + value + '"';
}
std::string Attribute(const char* name, double value) { return Attribute(name, SvgNumber(value)); }
std::string Named(const char* kind, std::size_t number) { return kId + (kind + std::to_string(number)); }
std::string ColourOf(const SurfaceBrush& brush) { return brush.Colour ? SvgColour(*brush.Colour) : "none"; }

// FNV-1a (Fowler, Noll & Vo), 32 bits, as letters and digits.
std::string Fingerprint(std::string_view text) {
  std::uint32_t hash = 2166136261;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619;
  std::string digits;
  for (; hash != 0; hash /= 36) digits += "0123456789abcdefghijklmnopqrstuvwxyz"[hash % 36];
  return digits;
}

// Whether the ramp runs evenly from its first colour to its last, to a level of each channel.
bool IsEven(std::span<const std::int32_t> ramp) {
  for (std::size_t k = 0; k < ramp.size(); ++k)
    for (const int shift : {0, 8, 16}) {
      const auto level = [&](std::int32_t colour) { return 1.0 * (colour >> shift & 0xFF); };
      const double part = ramp.size() > 1 ? 1.0 * static_cast<double>(k) / static_cast<double>(ramp.size() - 1) : 0;
      const double even = level(ramp.front()) + part * (level(ramp.back()) - level(ramp.front()));
      if (std::abs(level(ramp[k]) - even) > 1) return false;
    }
  return true;
}

}  // namespace

SvgSurface::SvgSurface(DrawingSurface& measures) : PictureSurface(measures), lines_(measures.UnitsPerPixel()) {}

std::string SvgSurface::Document(std::string_view title, std::string_view description) {
  Flush();
  EndClip();
  const double width = 1.0 * ScaleWidth() / UnitsPerPixel(), height = 1.0 * ScaleHeight() / UnitsPerPixel();
  constexpr double kReaderTwips = 15;  // to a pixel of the reader's, of which 96 are an inch
  const double across = TwipsPerPixelX() * UnitsPerPixel() / kReaderTwips,
               down = TwipsPerPixelY() * UnitsPerPixel() / kReaderTwips;
  const std::string titleId = Named("title", 0), aboutId = Named("about", 0);
  std::string document = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"";
  document += Attribute("xmlns:xlink", "http://www.w3.org/1999/xlink") + Attribute("version", "1.1");
  document += Attribute("width", width * across) + Attribute("height", height * down);
  document += Attribute("viewBox", "0 0 " + SvgNumber(width) + ' ' + SvgNumber(height));
  document += Attribute("role", "img") + Attribute("aria-labelledby", titleId + ' ' + aboutId);
  document += Attribute("xml:space", "preserve") + ">\n";
  document += "<title" + Attribute("id", titleId) + '>' + XmlText(title) + "</title>\n";
  document += "<desc" + Attribute("id", aboutId) + '>' + XmlText(description) + "</desc>\n";
  document += body_ + "</svg>\n";

  const std::string id = 'q' + Fingerprint(document) + '-';
  std::string named;
  named.reserve(document.size());
  for (const char c : document)
    if (c == kId)
      named += id;
    else
      named += c;
  return named;
}

SurfaceHandle SvgSurface::SelectObject(SurfaceHandle object) {
  FlushLines();  // in the old pen
  return PictureSurface::SelectObject(object);
}

ExactPoint SvgSurface::OnPixel(DevicePoint point, double shift) const {
  const auto pixel = [&](std::int32_t at) { return 1.0 * PictureSurface::OnPixel(at) / UnitsPerPixel() + shift; };
  return {pixel(point.x), pixel(point.y)};
}

ExactPoint SvgSurface::Exact(DevicePoint point) const {
  return {1.0 * point.x / UnitsPerPixel() + kMiddle, 1.0 * point.y / UnitsPerPixel() + kMiddle};
}

std::string SvgSurface::Stroke(const PenLook& look, const char* join) const {
  const SurfacePen& pen = Objects().Pen();
  if (pen.Style == kNoLine) return {};
  std::string style = Attribute("stroke", SvgColour(pen.Colour));
  if (look.Width != 1) style += Attribute("stroke-width", look.Width);
  if (!look.FlatEnds) style += Attribute("stroke-linecap", "round");
  if (join != nullptr) style += Attribute("stroke-linejoin", join);
  return style;
}

std::string SvgSurface::ShapeStyle(const SurfaceBrush& brush, bool outlined, const char* join) const {
  return Attribute("fill", ColourOf(brush)) + (outlined ? Stroke(Look(), join) : std::string());
}

// Of facets the outline has smooth edges, which no gap shines through. Without one the edges are hard.
std::string SvgSurface::FacetStyle(const std::string& fill) const {
  std::string style = Attribute("fill", fill);
  if (Objects().Pen().Style == kNoLine) return style + Attribute("shape-rendering", "crispEdges");
  const PenLook look = Look();
  style += Stroke(look, "round");
  std::string dashes;
  for (const double element : look.Pattern.Elements()) dashes += (dashes.empty() ? "" : " ") + SvgNumber(element);
  return dashes.empty() ? style : style + Attribute("stroke-dasharray", dashes);
}

void SvgSurface::Put(const std::string& style, const std::string& element) {
  if (!clip_.empty() && !inClip_) {
    EndStyle();
    const auto [known, isNew] = clips_.try_emplace(clip_, clips_.size() + 1);
    const std::string id = Named("clip", known->second);
    if (isNew) body_ += "<clipPath" + Attribute("id", id) + '>' + clip_ + "</clipPath>\n";
    body_ += "<g" + Attribute("clip-path", "url(#" + id + ')') + ">\n";
    inClip_ = true;
  }
  if (style != style_) {
    EndStyle();
    body_ += "<g" + style + ">\n";
    style_ = style;
  }
  body_ += element + '\n';
}

void SvgSurface::EndStyle() {
  if (!style_.empty()) body_ += "</g>\n";
  style_.clear();
}

void SvgSurface::EndClip() {
  EndStyle();
  if (inClip_) body_ += "</g>\n";
  inClip_ = false;
}

void SvgSurface::Flush() {
  FlushLines();
  FlushFacets();
}

// There are programs that smooth the edges of facets all the same.
void SvgSurface::GatherFacet(std::span<const DevicePoint> corners, FacetLook look) {
  FlushLines();
  gatheredFacets_.emplace_back(corners.begin(), corners.end());
  facetLooks_.push_back(std::move(look));
}

void SvgSurface::FlushFacets() {
  if (gatheredFacets_.empty()) return;
  const auto facets = ReachUnderLater(std::exchange(gatheredFacets_, {}));
  const std::vector<FacetLook> looks = std::exchange(facetLooks_, {});
  for (std::size_t i = 0; i < facets.size(); ++i) {
    std::vector<ExactPoint> places;
    for (const DevicePoint& corner : facets[i]) places.push_back(Exact(corner));
    SvgPath path;
    path.Add(places, true);
    Put(looks[i].Style, looks[i].Gradient + "<path" + Attribute("d", path.Data()) + looks[i].Fill + "/>");
  }
}

void SvgSurface::FlushLines() {
  if (lines_.Empty()) return;
  const bool onPixels = lines_.RunsAlongOrDown();
  const PenLook look = Look();
  const auto place = [&](DevicePoint point) { return onPixels ? OnPixel(point, look.Shift) : Exact(point); };
  if (onPixels)
    lines_.Move([&](DevicePoint point) {
      return DevicePoint{PictureSurface::OnPixel(point.x), PictureSurface::OnPixel(point.y)};
    });
  const PaintedLines gathered = lines_.Take();
  if (Objects().Pen().Style == kNoLine) return;

  // With a rim, since a line just outside reaches in by half of its width.
  const double rim = look.Width;
  const Sight sight{-rim, -rim, 1.0 * ScaleWidth() / UnitsPerPixel() + rim,
                    1.0 * ScaleHeight() / UnitsPerPixel() + rim};
  SvgPath path;
  const auto add = [&](std::span<const DevicePoint> line) {
    std::vector<ExactPoint> places;
    for (const DevicePoint& point : line) places.push_back(place(point));
    for (std::vector<ExactPoint>& part : PartsInSight(places, sight)) {
      const bool closed = part.size() > 3 && part.front() == part.back();
      if (closed) part.pop_back();
      path.Add(part, closed);
    }
  };
  for (const std::vector<DevicePoint>& line : gathered.Longer) add(line);
  for (const std::array<DevicePoint, 2>& step : gathered.Steps) add(step);
  if (path.Empty()) return;
  // The corners of a frame are square.
  const char* const join = onPixels ? nullptr : look.Width <= 2 ? "bevel" : "round";
  Put(Attribute("fill", "none") + Stroke(look, join), "<path" + Attribute("d", path.Data()) + "/>");
}

void SvgSurface::Rectangle(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) {
  Flush();
  const double shift = Look().Shift;
  const ExactPoint a = OnPixel({std::min(left, right), std::min(top, bottom)}, shift),
                   b = OnPixel({std::max(left, right), std::max(top, bottom)}, shift);
  Put(ShapeStyle(Objects().Brush(), true, nullptr), "<rect" + Attribute("x", a.x) + Attribute("y", a.y) +
                                                        Attribute("width", b.x - a.x) + Attribute("height", b.y - a.y) +
                                                        "/>");
}

void SvgSurface::Ellipse(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) {
  Flush();
  const double shift = Look().Shift;
  const ExactPoint a = OnPixel({left, top}, shift), b = OnPixel({right, bottom}, shift);
  Put(ShapeStyle(Objects().Brush(), true, nullptr),
      "<ellipse" + Attribute("cx", (a.x + b.x) / 2) + Attribute("cy", (a.y + b.y) / 2) +
          Attribute("rx", std::abs(b.x - a.x) / 2) + Attribute("ry", std::abs(b.y - a.y) / 2) + "/>");
}

void SvgSurface::Polygon(std::span<const DevicePoint> points) {
  if (points.empty()) return;
  if (facets_ && Objects().Pen().Style == kNoLine) {
    if (Objects().Brush().Colour)
      GatherFacet(points, {FacetStyle(ColourOf(Objects().Brush())) + Attribute("fill-rule", "evenodd"), "", ""});
    return;
  }
  Flush();
  const double shift = Look().Shift;
  std::vector<ExactPoint> places;
  for (const DevicePoint& point : points) places.push_back(facets_ ? Exact(point) : OnPixel(point, shift));
  SvgPath path;
  path.Add(places, true);
  Put(facets_ ? FacetStyle(ColourOf(Objects().Brush())) + Attribute("fill-rule", "evenodd")
              : ShapeStyle(Objects().Brush(), true, Look().Width <= 2 ? "bevel" : "round"),
      "<path" + Attribute("d", path.Data()) + "/>");
}

void SvgSurface::SetFacets(bool joined) {
  Flush();
  facets_ = joined;
}

std::string SvgSurface::RampId(std::span<const std::int32_t> ramp) {
  std::string stops;
  const double steps = static_cast<double>(ramp.size());
  const auto stop = [&](double at, std::size_t k) {
    stops += "<stop" + Attribute("offset", at) + Attribute("stop-color", SvgColour(ramp[k])) + "/>";
  };
  if (IsEven(ramp)) {
    stop(0, 0);
    stop(1, ramp.size() - 1);
  } else {  // each colour as far as it goes
    for (std::size_t k = 0; k < ramp.size(); ++k) {
      stop(static_cast<double>(k) / steps, k);
      stop(static_cast<double>(k + 1) / steps, k);
    }
  }
  const auto [known, isNew] = ramps_.try_emplace(stops, ramps_.size() + 1);
  const std::string id = Named("ramp", known->second);
  if (isNew) body_ += "<linearGradient" + Attribute("id", id) + '>' + stops + "</linearGradient>\n";
  return id;
}

// Between the corners the colour changes evenly, which is what a linear gradient does: it begins where the place is 0
// and ends where it is 1.
void SvgSurface::ShadeTriangle(const std::array<DevicePoint, 3>& corners, const std::array<double, 3>& places,
                               std::span<const std::int32_t> ramp) {
  if (ramp.empty()) return;
  const ExactPoint a = Exact(corners[0]), b = Exact(corners[1]), c = Exact(corners[2]);
  const double twice = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);  // of the area
  if (twice == 0) return;
  const double pb = places[1] - places[0], pc = places[2] - places[0];
  // The change of the place to a pixel across and down.
  const double dx = (pb * (c.y - a.y) - pc * (b.y - a.y)) / twice, dy = (pc * (b.x - a.x) - pb * (c.x - a.x)) / twice;
  const double steepness = dx * dx + dy * dy;
  const auto [least, most] = std::ranges::minmax(places);
  const double step = 1 / static_cast<double>(ramp.size());
  constexpr const char* kCrisp = " stroke=\"none\" shape-rendering=\"crispEdges\"";
  if (most - least < step || steepness == 0) {
    const double middle = std::clamp((least + most) / 2, 0.0, 1.0) * static_cast<double>(ramp.size());
    const std::int32_t colour = ramp[std::min(static_cast<std::size_t>(middle), ramp.size() - 1)];
    GatherFacet(corners, {kCrisp, Attribute("fill", SvgColour(colour)), ""});
    if (!facets_) FlushFacets();
    return;
  }
  FlushLines();
  EndStyle();
  const std::string ramped = RampId(ramp), id = Named("shade", ++gradients_);
  const auto at = [&](double place) {
    const double along = (place - places[0]) / steepness;
    return ExactPoint{a.x + along * dx, a.y + along * dy};
  };
  const ExactPoint from = at(0), to = at(1);
  GatherFacet(corners, {kCrisp, Attribute("fill", "url(#" + id + ')'),
                        "<linearGradient" + Attribute("id", id) + Attribute("xlink:href", '#' + ramped) +
                            Attribute("gradientUnits", "userSpaceOnUse") + Attribute("x1", from.x) +
                            Attribute("y1", from.y) + Attribute("x2", to.x) + Attribute("y2", to.y) + "/>"});
  if (!facets_) FlushFacets();
}

void SvgSurface::FillRgn(SurfaceHandle region, SurfaceHandle brush) {
  Flush();
  const SurfaceRegion& area = Objects().Region(region);
  const double shift = Look().Shift;
  std::vector<ExactPoint> places;
  for (const DevicePoint& corner : area.Corners) places.push_back(OnPixel(corner, shift));
  if (area.Rectangular) places = {places[0], {places[1].x, places[0].y}, places[1], {places[0].x, places[1].y}};
  SvgPath path;
  path.Add(places, true);
  Put(ShapeStyle(Objects().Brush(brush), false, nullptr) + Attribute("fill-rule", "evenodd"),
      "<path" + Attribute("d", path.Data()) + "/>");
}

void SvgSurface::SelectClipRgn(SurfaceHandle region) {
  Flush();
  EndClip();
  clip_.clear();
  if (region == 0) return;
  const SurfaceRegion& area = Objects().Region(region);
  if (area.Rectangular) {
    // Pixels through which the edges run are within.
    const ExactPoint a = OnPixel(area.Corners[0], 0), b = OnPixel(area.Corners[1], 1);
    clip_ = "<rect" + Attribute("x", a.x) + Attribute("y", a.y) + Attribute("width", std::max(b.x - a.x, 0.0)) +
            Attribute("height", std::max(b.y - a.y, 0.0)) + "/>";
    return;
  }
  std::vector<ExactPoint> places;
  for (const DevicePoint& corner : area.Corners) places.push_back(Exact(corner));
  SvgPath path;
  path.Add(places, true);
  clip_ = "<path" + Attribute("d", path.Data()) + Attribute("clip-rule", "evenodd") + "/>";
}

void SvgSurface::SetBkMode(int mode) {
  constexpr int kTransparent = 1;
  Flush();
  opaque_ = mode != kTransparent;
}

void SvgSurface::TextOutA(std::int32_t x, std::int32_t y, std::string_view text) {
  Flush();
  if (text.empty()) return;
  const LogicalFont& font = Objects().Font();
  const double units = UnitsPerPixel();
  const DeviceExtent cell = GetTextExtentPoint32A(text);
  const ExactPoint at = OnPixel({x, y}, 0);
  std::string place = "translate(" + SvgNumber(at.x) + ' ' + SvgNumber(at.y) + ')';
  // Tenths of a degree against the clock, where SVG turns with it.
  if (font.Escapement != 0) place += "rotate(" + SvgNumber(-font.Escapement / 10.0) + ')';
  if (opaque_)
    Put(Attribute("fill", "#ffffff"), "<rect" + Attribute("transform", place) + Attribute("width", cell.cx / units) +
                                          Attribute("height", cell.cy / units) + "/>");

  // Large letters made small, since there are programs that round the widths of letters to whole numbers.
  constexpr int kLarge = 64;
  place += "scale(0.015625)";  // 1 / kLarge
  const std::int32_t size = std::max(RoundToInt32(std::abs(font.Height) / units), 1) * kLarge;
  std::string style = Attribute("font-family", SvgFontFamily(font.FaceName)) + Attribute("font-size", size);
  if (font.Weight != 400) style += Attribute("font-weight", font.Weight);
  if (font.Italic) style += Attribute("font-style", "italic");
  if (font.Underline || font.StrikeOut)
    style += Attribute("text-decoration", font.Underline && font.StrikeOut ? "underline line-through"
                                          : font.Underline                 ? "underline"
                                                                           : "line-through");
  style += Attribute("fill", SvgColour(textColour_));

  // On a screen letters stand on pixels, which makes a text a little wider or narrower than they are by design.
  LogicalFont large = font;
  large.Height = -size * UnitsPerPixel();
  const double excess = (1.0 * cell.cx * kLarge - ExtentIn(large, text).cx) / units;
  const std::string spacing = SvgNumber(std::round(excess / static_cast<double>(CharacterCount(text))));
  std::string element = "<text" + Attribute("transform", place) + Attribute("y", GetTextAscent() / units * kLarge);
  if (spacing != "0") element += Attribute("letter-spacing", spacing);
  Put(style, element + '>' + XmlText(text) + "</text>");
}

}  // namespace quorvex
