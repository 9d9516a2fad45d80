#pragma once

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QPolygonF>
#include <array>
#include <optional>
#include <span>
#include <vector>

#include "drawing/GatheredLines.h"
#include "drawing/PenLook.h"
#include "drawing/PixelCanvas.h"
#include "drawing/SurfaceObjects.h"

namespace quorvex {

// Draws with Qt: on an image, whatever scale it is shown at, or on the pages of a printer or PDF file. What is drawn is
// complete when the surface goes. A pixel of an image has kUnitsPerPixel units each way, so that a straight curve is
// straight.
//
// Edges are smoothed, but lines that all run along or down, shapes, letters and clips lie on whole pixels and stay
// crisp. MoveToEx and LineTo gather lines, which are painted together at the next call of another kind: a curve of many
// thousand points, on screen, is a matter of milliseconds. Facets go straight to an image's pixels, at their exact
// places.
class QtSurface : public DrawingSurface {
 public:
  enum class Device { kPicture, kPrinter };
  static constexpr std::int32_t kUnitsPerPixel = PixelCanvas::kUnitsPerPixel;

  // The device must outlive the surface. Its resolution tells the size of fonts and margins. A printer must print on
  // the full page, since plots keep the margins themselves.
  explicit QtSurface(QPaintDevice& device, Device kind = Device::kPicture);
  // Draws as if on the image, which outlives the surface and stays as it is: everything stands where it would stand
  // there, and the whole is scaled to the device.
  QtSurface(QPaintDevice& device, QImage& measures);
  // The same with a painter at its work on a page, whose window is what the image shows; its user saves and restores
  // it.
  QtSurface(QPainter& painter, QImage& measures);
  ~QtSurface() override;
  QtSurface(const QtSurface&) = delete;
  QtSurface& operator=(const QtSurface&) = delete;

  std::int32_t GetDeviceCaps(DeviceCap index) const override;
  bool IsPrinter() const override { return kind_ == Device::kPrinter; }
  double TwipsPerPixelX() const override;
  double TwipsPerPixelY() const override;
  std::int32_t ScaleWidth() const override { return measures_.width() * units_; }
  std::int32_t ScaleHeight() const override { return measures_.height() * units_; }
  std::int32_t UnitsPerPixel() const override { return units_; }

  SurfaceHandle CreatePen(int style, std::int32_t width, std::int32_t colour) override;
  SurfaceHandle CreateSolidBrush(std::int32_t colour) override;
  SurfaceHandle GetStockObject(int index) override { return objects_.Stock(index); }
  SurfaceHandle CreateFontIndirectA(const LogicalFont& font) override { return objects_.Add(font); }
  SurfaceHandle SelectObject(SurfaceHandle object) override;
  void DeleteObject(SurfaceHandle object) override { objects_.Delete(object); }

  void MoveToEx(std::int32_t x, std::int32_t y) override { lines_.MoveTo({x, y}); }
  void LineTo(std::int32_t x, std::int32_t y) override {
    FlushFacets();
    lines_.LineTo({x, y});
  }
  void Rectangle(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) override;
  void Ellipse(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) override;
  void Polygon(std::span<const DevicePoint> points) override;

  void SetFacets(bool joined) override;
  void ShadeTriangle(const std::array<DevicePoint, 3>& corners, const std::array<double, 3>& places,
                     std::span<const std::int32_t> ramp) override;

  SurfaceHandle CreatePolygonRgn(std::span<const DevicePoint> points, int fillMode) override;
  SurfaceHandle CreateRectRgn(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) override;
  void FillRgn(SurfaceHandle region, SurfaceHandle brush) override;
  void SelectClipRgn(SurfaceHandle region) override;

  void SetBkMode(int mode) override;
  void SetTextColor(std::int32_t colour) override { textColour_ = colour; }
  void TextOutA(std::int32_t x, std::int32_t y, std::string_view text) override;
  DeviceExtent GetTextExtentPoint32A(std::string_view text) override;
  std::int32_t GetTextAscent() override;

  void SetMapMode(int mode) override;
  void SetWindowOrgEx(std::int32_t x, std::int32_t y) override;
  void SetWindowExtEx(std::int32_t cx, std::int32_t cy) override;
  void SetViewportOrgEx(std::int32_t x, std::int32_t y) override;
  void SetViewportExtEx(std::int32_t cx, std::int32_t cy) override;
  DeviceExtent GetWindowExtEx() const override { return windowExtent_; }

 private:
  enum class Outline { None, Pen };
  struct Shape {
    enum Shapes { kRectangle, kEllipse, kPolygon } Kind;
    std::vector<ExactPoint> Points;  // in pixels; of the first two kinds: opposite corners
    Outline Border;
    SurfaceBrush Fill;
    bool operator==(const Shape&) const = default;
  };
  struct Stamp {
    Shape Source;  // its first point at the origin
    QRect Bounds;  // of the picture, seen from there
    QImage Picture;
  };

  QPainter& Painter();    // begins to paint
  void BeginPainting();   // with what drawings start with
  PixelCanvas* Canvas();  // for facets; none where the painter must paint them
  QPen Pen() const;
  PenLook Look() const { return {objects_.Pen(), *this}; }
  const QFont& Font();
  bool IsRaster() const { return raster_; }
  void ApplyMap();
  QPointF InPixels(DevicePoint point) const {
    return {point.x * scale_.x() + origin_.x(), point.y * scale_.y() + origin_.y()};
  }
  QPoint OnPixels(DevicePoint point) const { return InPixels(point).toPoint(); }
  QTransform Shifted() const;  // onto whole pixels, as the pen's width asks
  void Flush();                // paints the lines and facets gathered, of which there are one kind at most
  void FlushLines();
  void FlushFacets();
  void PaintLine(const QPolygonF& line);  // of more than two points
  void PaintShape(Shape::Shapes kind, std::span<const DevicePoint> points, Outline outline, const SurfaceBrush& fill);
  void PaintAtOrigin(QPainter& painter, const Shape& shape) const;
  const Stamp* StampOf(const Shape& shape);

  QtSurface(QPaintDevice& device, QPaintDevice& measures, Device kind, QPainter* painter = nullptr);

  QPaintDevice &device_, &measures_;
  Device kind_;
  bool raster_;         // pixels, not paths
  std::int32_t units_;  // to a pixel
  GatheredLines lines_;
  QPainter ownPainter_;
  QPainter& painter_;
  std::optional<PixelCanvas> canvas_;  // where the device is an image of the canvas' pixels
  bool clipsToPath_ = false;           // which a canvas cannot
  bool facets_ = false;
  std::vector<std::vector<DevicePoint>> gatheredFacets_;  // those without outlines, in their order,
  std::vector<std::int32_t> facetColours_;                // with the colour of each
  SurfaceObjects objects_;
  std::int32_t textColour_ = 0;
  QFont font_;
  bool fontIsCurrent_ = false;

  std::vector<Stamp> stamps_;  // for the tools in use

  int mapMode_ = 1;
  DevicePoint windowOrigin_, viewportOrigin_;
  DeviceExtent windowExtent_, viewportExtent_;
  QPointF scale_, origin_;  // of the map to pixels
};

}  // namespace quorvex
