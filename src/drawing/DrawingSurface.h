#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace quorvex {

// A place and a size in device units. x grows to the right, y downward.
struct DevicePoint {
  std::int32_t x = 0, y = 0;
  bool operator==(const DevicePoint&) const = default;
};

struct DeviceExtent {
  std::int32_t cx = 0, cy = 0;
  bool operator==(const DeviceExtent&) const = default;
};

// What GetDeviceCaps is asked for.
enum class DeviceCap : int {
  HORZSIZE = 4,  // width and height in millimetres
  VERTSIZE = 6,
  HORZRES = 8,  // and in device units
  VERTRES = 10,
  BITSPIXEL = 12,       // bits that tell a pixel's colour
  LOGPIXELSY = 90,      // device units per inch, down
  PHYSICALWIDTH = 110,  // a whole sheet in device units, margins that cannot be printed on included
  PHYSICALHEIGHT = 111,
};

// A font as a surface is asked for it.
struct LogicalFont {
  std::int32_t Height = 0;      // device units: below 0 the size of the letters (em), above 0 the height of a line
  std::int32_t Escapement = 0;  // tenths of a degree from the horizontal, counterclockwise
  std::int32_t Weight = 400;    // 400 normal, 700 bold
  bool Italic = false, Underline = false, StrikeOut = false;
  int Quality = 2;
  std::string FaceName;
  bool operator==(const LogicalFont&) const = default;
};

// a * b / c without overflow between, rounded, halves away from zero. -1 where c is 0 or the result does not fit.
std::int32_t MulDiv(std::int32_t a, std::int32_t b, std::int32_t c);

// A pen, brush, font or region that a surface made. 0 is none.
using SurfaceHandle = std::uint32_t;

// The operations that plots draw with; they draw on nothing else. Screen, image, paper, picture files and the tests'
// recorder implement it. Coordinates are device units; an outline runs through the coordinates given, its pen lying
// half on either side. Colours are 0x00BBGGRR, texts UTF-8.
//
// A surface starts with a black pen of width 1, a white brush, black text on an opaque ground, and no clip. What it
// makes lives until DeleteObject: SurfaceObject below sees to that.
class DrawingSurface {
 public:
  virtual ~DrawingSurface() = default;

  // The device. A printer's page is its whole sheet, any other surface's the drawing itself, which is ScaleWidth by
  // ScaleHeight device units; HORZRES and VERTRES are then the same two. TwipsPerPixelX and Y are 1440 / (device
  // units per inch), fractions included: 15 on a screen at 100 %.
  virtual std::int32_t GetDeviceCaps(DeviceCap index) const = 0;
  virtual bool IsPrinter() const = 0;
  virtual double TwipsPerPixelX() const = 0;
  virtual double TwipsPerPixelY() const = 0;
  virtual std::int32_t ScaleWidth() const = 0;
  virtual std::int32_t ScaleHeight() const = 0;
  // How many units a pixel has across and down; 1 where the device isn't told in finer ones.
  virtual std::int32_t UnitsPerPixel() const { return 1; }

  // Tools. A pen's style is 0, solid, 1 to 4, the patterns of StyledLines.h, which the outlines of polygons alone show,
  // or 5, which draws nothing; its ends and corners are round. SelectObject takes a pen, brush or font into use
  // and returns the one of its kind that was in use. Stock object 5 is the hollow brush, which is never deleted.
  virtual SurfaceHandle CreatePen(int style, std::int32_t width, std::int32_t colour) = 0;
  virtual SurfaceHandle CreateSolidBrush(std::int32_t colour) = 0;
  virtual SurfaceHandle GetStockObject(int index) = 0;
  virtual SurfaceHandle CreateFontIndirectA(const LogicalFont& font) = 0;
  virtual SurfaceHandle SelectObject(SurfaceHandle object) = 0;
  virtual void DeleteObject(SurfaceHandle object) = 0;  // must not be in use

  // Lines in the pen; the closed shapes are also filled with the brush.
  virtual void MoveToEx(std::int32_t x, std::int32_t y) = 0;
  virtual void LineTo(std::int32_t x, std::int32_t y) = 0;
  virtual void Rectangle(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) = 0;
  virtual void Ellipse(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) = 0;
  virtual void Polygon(std::span<const DevicePoint> points) = 0;

  // From now on polygons are facets of one surface: neighbours with common corners leave no gap between them, and none
  // is filled beyond its outline.
  virtual void SetFacets(bool /*joined*/) {}

  // Fills a triangle, without an outline, with the colour that each place of it has in the ramp, which stands for the
  // numbers from 0 to 1; `places` are those of the corners, and in between they change evenly. What lies outside 0 to 1
  // has the colour of the nearer end. A surface of pixels does it pixel by pixel; by itself it cuts the triangle where
  // the colour changes.
  virtual void ShadeTriangle(const std::array<DevicePoint, 3>& corners, const std::array<double, 3>& places,
                             std::span<const std::int32_t> ramp);

  // Regions: filled without an outline, or all that drawing is confined to. Fill mode 1 is even-odd. SelectClipRgn
  // takes a copy; 0 lifts the clip.
  virtual SurfaceHandle CreatePolygonRgn(std::span<const DevicePoint> points, int fillMode) = 0;
  virtual SurfaceHandle CreateRectRgn(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) = 0;
  virtual void FillRgn(SurfaceHandle region, SurfaceHandle brush) = 0;
  virtual void SelectClipRgn(SurfaceHandle region) = 0;

  // Text. (x, y) is the upper left corner of the text's cell, about which a font with an escapement turns the whole.
  // The extent is that of the cell before it is turned.
  virtual void SetBkMode(int mode) = 0;  // 1 transparent, 2 opaque
  virtual void SetTextColor(std::int32_t colour) = 0;
  virtual void TextOutA(std::int32_t x, std::int32_t y, std::string_view text) = 0;
  virtual DeviceExtent GetTextExtentPoint32A(std::string_view text) = 0;
  // From a cell's upper edge to the line that its letters stand on.
  virtual std::int32_t GetTextAscent() { return MulDiv(GetTextExtentPoint32A("x").cy, 4, 5); }

  // The map from the drawing's coordinates to the device. In mode 8 (anisotropic) the window, a rectangle of the
  // drawing, covers the viewport, a rectangle of the device; mode 1 maps one to one.
  virtual void SetMapMode(int mode) = 0;
  virtual void SetWindowOrgEx(std::int32_t x, std::int32_t y) = 0;
  virtual void SetWindowExtEx(std::int32_t cx, std::int32_t cy) = 0;
  virtual void SetViewportOrgEx(std::int32_t x, std::int32_t y) = 0;
  virtual void SetViewportExtEx(std::int32_t cx, std::int32_t cy) = 0;
  virtual DeviceExtent GetWindowExtEx() const = 0;

  // Ends a recording and returns its handle; 0 on a surface that is no metafile.
  virtual SurfaceHandle CloseEnhMetaFile() { return 0; }

  // Device units to one unit of line weight, so that lines weigh the same everywhere as on a screen at 100 %: 15 /
  // TwipsPerPixelX, rounded, at least 1; 1 where the device knows no such measure.
  std::int32_t PenScale() const;

  // The coordinate of the pixel next to a place, where what is to look the same everywhere stands.
  std::int32_t OnPixel(std::int32_t at) const;
};

// Owns an object of a surface.
class SurfaceObject {
 public:
  SurfaceObject(DrawingSurface& surface, SurfaceHandle handle) : surface_(&surface), handle_(handle) {}
  SurfaceObject(SurfaceObject&& other) noexcept
      : surface_(other.surface_), handle_(std::exchange(other.handle_, SurfaceHandle{})) {}
  SurfaceObject& operator=(SurfaceObject&& other) noexcept {
    std::swap(surface_, other.surface_);
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~SurfaceObject() {
    if (handle_ != 0) surface_->DeleteObject(handle_);
  }

  operator SurfaceHandle() const& { return handle_; }
  operator SurfaceHandle() && = delete;  // the object would be gone before its handle is used

 private:
  DrawingSurface* surface_;
  SurfaceHandle handle_;
};

// Takes an object into use for the length of a block, then the one before it again.
class Selection {
 public:
  Selection(DrawingSurface& surface, SurfaceHandle handle) : surface_(surface), before_(surface.SelectObject(handle)) {}
  ~Selection() { surface_.SelectObject(before_); }
  Selection(const Selection&) = delete;
  Selection& operator=(const Selection&) = delete;

 private:
  DrawingSurface& surface_;
  SurfaceHandle before_;
};

// Both: a pen, brush or font that one block makes and draws with.
class SelectedObject {
 public:
  SelectedObject(DrawingSurface& surface, SurfaceHandle handle) : SelectedObject(surface, {surface, handle}) {}
  SelectedObject(DrawingSurface& surface, SurfaceObject object)
      : object_(std::move(object)), selection_(surface, object_) {}

 private:
  SurfaceObject object_;
  Selection selection_;  // undone before the object goes
};

inline void DrawLine(DrawingSurface& surface, DevicePoint from, DevicePoint to) {
  surface.MoveToEx(from.x, from.y);
  surface.LineTo(to.x, to.y);
}

// Polygons drawn within a block are facets of one surface.
class FacetScope {
 public:
  explicit FacetScope(DrawingSurface& surface) : surface_(surface) { surface.SetFacets(true); }
  ~FacetScope() { surface_.SetFacets(false); }
  FacetScope(const FacetScope&) = delete;
  FacetScope& operator=(const FacetScope&) = delete;

 private:
  DrawingSurface& surface_;
};

// Confines the drawing of a block to a rectangle.
class ClipRectangle {
 public:
  ClipRectangle(DrawingSurface& surface, std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom)
      : surface_(surface), region_(surface, surface.CreateRectRgn(left, top, right, bottom)) {
    surface.SelectClipRgn(region_);
  }
  ~ClipRectangle() { surface_.SelectClipRgn(0); }
  ClipRectangle(const ClipRectangle&) = delete;
  ClipRectangle& operator=(const ClipRectangle&) = delete;

 private:
  DrawingSurface& surface_;
  SurfaceObject region_;
};

}  // namespace quorvex
