#pragma once

#include "drawing/DeviceSize.h"

namespace quorvex {

// A surface that shows nothing of what is drawn on it, 100 by 75 mm. Every character is as high as its font and half as
// wide.
class NullSurface final : public DrawingSurface {
 public:
  explicit NullSurface(std::int32_t unitsPerMillimetre) : unitsPerMillimetre_(unitsPerMillimetre) {}

  std::int32_t GetDeviceCaps(DeviceCap index) const override {
    return DeviceSize{{ScaleWidth(), ScaleHeight()}, {kWidth, kHeight}, unitsPerMillimetre_ * 254 / 10}.Cap(index);
  }
  bool IsPrinter() const override { return false; }
  double TwipsPerPixelX() const override { return 1440 / (25.4 * unitsPerMillimetre_); }
  double TwipsPerPixelY() const override { return TwipsPerPixelX(); }
  std::int32_t ScaleWidth() const override { return kWidth * unitsPerMillimetre_; }
  std::int32_t ScaleHeight() const override { return kHeight * unitsPerMillimetre_; }

  SurfaceHandle CreatePen(int, std::int32_t, std::int32_t) override { return 1; }
  SurfaceHandle CreateSolidBrush(std::int32_t) override { return 1; }
  SurfaceHandle GetStockObject(int) override { return 1; }
  SurfaceHandle CreateFontIndirectA(const LogicalFont& font) override {
    fontHeight_ = font.Height < 0 ? -font.Height : font.Height;
    return 1;
  }
  SurfaceHandle SelectObject(SurfaceHandle) override { return 1; }
  void DeleteObject(SurfaceHandle) override {}
  SurfaceHandle CreatePolygonRgn(std::span<const DevicePoint>, int) override { return 1; }
  SurfaceHandle CreateRectRgn(std::int32_t, std::int32_t, std::int32_t, std::int32_t) override { return 1; }
  void FillRgn(SurfaceHandle, SurfaceHandle) override {}
  void SelectClipRgn(SurfaceHandle) override {}

  void MoveToEx(std::int32_t, std::int32_t) override {}
  void LineTo(std::int32_t, std::int32_t) override {}
  void Rectangle(std::int32_t, std::int32_t, std::int32_t, std::int32_t) override {}
  void Ellipse(std::int32_t, std::int32_t, std::int32_t, std::int32_t) override {}
  void Polygon(std::span<const DevicePoint>) override {}
  void SetBkMode(int) override {}
  void SetTextColor(std::int32_t) override {}
  void TextOutA(std::int32_t, std::int32_t, std::string_view) override {}
  DeviceExtent GetTextExtentPoint32A(std::string_view text) override {
    return {static_cast<std::int32_t>(text.size()) * (fontHeight_ / 2), fontHeight_};
  }

  void SetMapMode(int) override {}
  void SetWindowOrgEx(std::int32_t, std::int32_t) override {}
  void SetWindowExtEx(std::int32_t, std::int32_t) override {}
  void SetViewportOrgEx(std::int32_t, std::int32_t) override {}
  void SetViewportExtEx(std::int32_t, std::int32_t) override {}
  DeviceExtent GetWindowExtEx() const override { return {ScaleWidth(), ScaleHeight()}; }

 private:
  static constexpr std::int32_t kWidth = 100, kHeight = 75;
  const std::int32_t unitsPerMillimetre_;
  std::int32_t fontHeight_ = 12;
};

}  // namespace quorvex
