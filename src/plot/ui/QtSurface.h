#pragma once

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QPolygonF>
#include <vector>

#include "plot/SurfaceObjects.h"

namespace quorvex {

// Draws with Qt: on an image, whose pixels are the device units whatever scale it is shown at, or on the pages of a
// printer or PDF file. What is drawn is complete when the surface goes.
//
// Edges are smoothed, but what runs straight along or down lies on whole pixels and stays crisp. MoveToEx and LineTo
// gather lines, which are painted together at the next call of another kind: a curve of many thousand points, on
// screen, is a matter of milliseconds.
class QtSurface : public DrawingSurface {
 public:
  enum class Device { kPicture, kPrinter };

  // The device must outlive the surface. Its resolution tells the size of fonts and margins. A printer must print on
  // the full page, since plots keep the margins themselves.
  explicit QtSurface(QPaintDevice& device, Device kind = Device::kPicture);
  ~QtSurface() override;
  QtSurface(const QtSurface&) = delete;
  QtSurface& operator=(const QtSurface&) = delete;

  std::int32_t GetDeviceCaps(DeviceCap index) const override;
  bool IsPrinter() const override { return kind_ == Device::kPrinter; }
  double TwipsPerPixelX() const override;
  double TwipsPerPixelY() const override;
  std::int32_t ScaleWidth() const override { return device_.width(); }
  std::int32_t ScaleHeight() const override { return device_.height(); }

  SurfaceHandle CreatePen(int style, std::int32_t width, std::int32_t colour) override;
  SurfaceHandle CreateSolidBrush(std::int32_t colour) override;
  SurfaceHandle GetStockObject(int index) override { return objects_.Stock(index); }
  SurfaceHandle CreateFontIndirectA(const LogicalFont& font) override { return objects_.Add(font); }
  SurfaceHandle SelectObject(SurfaceHandle object) override;
  void DeleteObject(SurfaceHandle object) override { objects_.Delete(object); }

  void MoveToEx(std::int32_t x, std::int32_t y) override;
  void LineTo(std::int32_t x, std::int32_t y) override;
  void Rectangle(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) override;
  void Ellipse(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) override;
  void Polygon(std::span<const DevicePoint> points) override;

  SurfaceHandle CreatePolygonRgn(std::span<const DevicePoint> points, int fillMode) override;
  SurfaceHandle CreateRectRgn(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) override;
  void FillRgn(SurfaceHandle region, SurfaceHandle brush) override;
  void SelectClipRgn(SurfaceHandle region) override;

  void SetBkMode(int mode) override;
  void SetTextColor(std::int32_t colour) override { textColour_ = colour; }
  void TextOutA(std::int32_t x, std::int32_t y, std::string_view text) override;
  DeviceExtent GetTextExtentPoint32A(std::string_view text) override;

  void SetMapMode(int mode) override;
  void SetWindowOrgEx(std::int32_t x, std::int32_t y) override;
  void SetWindowExtEx(std::int32_t cx, std::int32_t cy) override;
  void SetViewportOrgEx(std::int32_t x, std::int32_t y) override;
  void SetViewportExtEx(std::int32_t cx, std::int32_t cy) override;
  DeviceExtent GetWindowExtEx() const override { return windowExtent_; }

 private:
  using Line = std::vector<DevicePoint>;

  struct Shape {
    enum { kRectangle, kEllipse, kPolygon } Kind;
    std::vector<DevicePoint> Points;  // of the first two kinds: opposite corners
    bool Outlined;                    // with the pen
    SurfaceBrush Fill;
    bool operator==(const Shape&) const = default;
  };
  struct Stamp {
    Shape Of;       // its first point at the origin
    QPoint Corner;  // of the picture, seen from there
    QImage Picture;
  };

  QPainter& Painter();  // begins to paint
  QPen Pen() const;
  const QFont& Font();
  bool IsRaster() const;  // pixels, not paths
  void ApplyMap();
  void Flush();  // paints the lines gathered
  std::vector<Line> TakeLines();
  void PaintLine(const QPolygonF& line);  // of more than two points
  QTransform Shifted() const;             // the map, onto whole pixels, as the pen's width asks
  void PaintShape(Shape shape);
  void PaintAtOrigin(QPainter& painter, const Shape& shape) const;
  const Stamp* StampOf(const Shape& shape);

  QPaintDevice& device_;
  Device kind_;
  QPainter painter_;
  SurfaceObjects objects_;
  std::int32_t textColour_ = 0;
  QFont font_;
  bool fontIsCurrent_ = false;

  DevicePoint position_;
  std::vector<DevicePoint> points_;  // of the lines gathered, one behind the other; each has two or more
  std::vector<std::size_t> starts_;  // where in them each line begins

  std::vector<Stamp> stamps_;  // for the tools in use

  int mapMode_ = 1;
  DevicePoint windowOrigin_, viewportOrigin_;
  DeviceExtent windowExtent_, viewportExtent_;
  QTransform map_;
};

}  // namespace quorvex
