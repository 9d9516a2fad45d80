#pragma once

#include "drawing/SurfaceObjects.h"

namespace quorvex {

// What the surfaces that write picture files share. Size, units and the extents of texts are those of another surface,
// so that in the file everything stands where it would stand there. The map is one to one: plots set none in files.
class PictureSurface : public DrawingSurface {
 public:
  // `measures` must outlive the surface. Nothing is drawn on it.
  explicit PictureSurface(DrawingSurface& measures) : measures_(measures) {}
  PictureSurface(const PictureSurface&) = delete;
  PictureSurface& operator=(const PictureSurface&) = delete;

  std::int32_t GetDeviceCaps(DeviceCap index) const override { return measures_.GetDeviceCaps(index); }
  bool IsPrinter() const override { return false; }
  double TwipsPerPixelX() const override { return measures_.TwipsPerPixelX(); }
  double TwipsPerPixelY() const override { return measures_.TwipsPerPixelY(); }
  std::int32_t ScaleWidth() const override { return measures_.ScaleWidth(); }
  std::int32_t ScaleHeight() const override { return measures_.ScaleHeight(); }
  std::int32_t UnitsPerPixel() const override { return measures_.UnitsPerPixel(); }

  SurfaceHandle CreatePen(int style, std::int32_t width, std::int32_t colour) override {
    return objects_.Add(SurfacePen{width, colour, style});
  }
  SurfaceHandle CreateSolidBrush(std::int32_t colour) override { return objects_.Add(SurfaceBrush{colour}); }
  SurfaceHandle GetStockObject(int index) override { return objects_.Stock(index); }
  SurfaceHandle CreateFontIndirectA(const LogicalFont& font) override { return objects_.Add(font); }
  SurfaceHandle SelectObject(SurfaceHandle object) override { return objects_.Select(object); }
  void DeleteObject(SurfaceHandle object) override { objects_.Delete(object); }

  SurfaceHandle CreatePolygonRgn(std::span<const DevicePoint> points, int /*fillMode*/) override {
    return objects_.Add(SurfaceRegion{{points.begin(), points.end()}});
  }
  SurfaceHandle CreateRectRgn(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) override {
    return objects_.Add(SurfaceRegion{{{left, top}, {right, bottom}}, true});
  }

  DeviceExtent GetTextExtentPoint32A(std::string_view text) override { return ExtentIn(objects_.Font(), text); }
  std::int32_t GetTextAscent() override {
    const SelectedObject inUse(measures_, measures_.CreateFontIndirectA(objects_.Font()));
    return measures_.GetTextAscent();
  }

  void SetMapMode(int) override {}
  void SetWindowOrgEx(std::int32_t, std::int32_t) override {}
  void SetWindowExtEx(std::int32_t, std::int32_t) override {}
  void SetViewportOrgEx(std::int32_t, std::int32_t) override {}
  void SetViewportExtEx(std::int32_t, std::int32_t) override {}
  DeviceExtent GetWindowExtEx() const override { return {ScaleWidth(), ScaleHeight()}; }

 protected:
  const SurfaceObjects& Objects() const { return objects_; }
  DeviceExtent ExtentIn(const LogicalFont& font, std::string_view text) {
    const SelectedObject inUse(measures_, measures_.CreateFontIndirectA(font));
    return measures_.GetTextExtentPoint32A(text);
  }

 private:
  DrawingSurface& measures_;
  SurfaceObjects objects_;
};

}  // namespace quorvex
