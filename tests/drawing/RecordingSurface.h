#pragma once

#include <array>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "core/NumberText.h"
#include "drawing/DeviceSize.h"
#include "drawing/SurfaceObjects.h"

namespace quorvex {

// Writes down each call as a line of text, "LineTo 120 85", and what it returned behind "=" where the drawing cannot
// know. In a font of N units every character is N / 2 wide and N high (6 by 12 at 9 points on 96 units to the inch).
class RecordingSurface : public DrawingSurface {
 public:
  explicit RecordingSurface(std::int32_t width = 400, std::int32_t height = 300, int unitsPerInch = 96)
      : width_(width), height_(height), unitsPerInch_(unitsPerInch), window_{width, height} {}

  bool Printer = false;
  std::map<DeviceCap, std::int32_t> Caps;  // instead of what follows from the size and the units to the inch

  std::vector<std::string> Calls;

  std::string Text() const {
    std::string text;
    for (const std::string& call : Calls) text += call + '\n';
    return text;
  }
  // Those of the calls that begin with one of the words, in order.
  std::vector<std::string> Only(std::initializer_list<std::string_view> words) const {
    std::vector<std::string> calls;
    for (const std::string& call : Calls)
      for (const std::string_view word : words)
        if (std::string_view(call).substr(0, call.find(' ')) == word) calls.push_back(call);
    return calls;
  }
  std::size_t ObjectCount() const { return objects_.Count(); }  // made and not deleted
  const SurfaceObjects& Objects() const { return objects_; }

  std::int32_t GetDeviceCaps(DeviceCap index) const override {
    if (const auto found = Caps.find(index); found != Caps.end()) return found->second;
    const auto millimetres = [&](std::int32_t units) { return RoundToInt32(units * 25.4 / unitsPerInch_); };
    return DeviceSize{{width_, height_}, {millimetres(width_), millimetres(height_)}, unitsPerInch_}.Cap(index);
  }
  bool IsPrinter() const override { return Printer; }
  double TwipsPerPixelX() const override { return 1440.0 / unitsPerInch_; }
  double TwipsPerPixelY() const override { return 1440.0 / unitsPerInch_; }
  std::int32_t ScaleWidth() const override { return width_; }
  std::int32_t ScaleHeight() const override { return height_; }

  SurfaceHandle CreatePen(int style, std::int32_t width, std::int32_t colour) override {
    return Made(SurfacePen{width, colour, style}, "CreatePen", style, width, colour);
  }
  SurfaceHandle CreateSolidBrush(std::int32_t colour) override {
    return Made(SurfaceBrush{colour}, "CreateSolidBrush", colour);
  }
  SurfaceHandle GetStockObject(int index) override {
    const SurfaceHandle handle = objects_.Stock(index);
    Write("GetStockObject", index, "=", handle);
    return handle;
  }
  SurfaceHandle CreateFontIndirectA(const LogicalFont& font) override {
    return Made(font, "CreateFontIndirectA", font.Height, font.Escapement, font.Weight, font.Italic, font.Underline,
                font.StrikeOut, font.Quality, font.FaceName);
  }
  SurfaceHandle SelectObject(SurfaceHandle object) override {
    Write("SelectObject", object);
    return objects_.Select(object);
  }
  void DeleteObject(SurfaceHandle object) override {
    Write("DeleteObject", object);
    objects_.Delete(object);
  }

  void MoveToEx(std::int32_t x, std::int32_t y) override { Write("MoveToEx", x, y); }
  void LineTo(std::int32_t x, std::int32_t y) override { Write("LineTo", x, y); }
  void Rectangle(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) override {
    Write("Rectangle", left, top, right, bottom);
  }
  void Ellipse(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) override {
    Write("Ellipse", left, top, right, bottom);
  }
  void Polygon(std::span<const DevicePoint> points) override { Write("Polygon", points); }

  void SetFacets(bool joined) override { Write("SetFacets", joined); }
  void ShadeTriangle(const std::array<DevicePoint, 3>& corners, const std::array<double, 3>& places,
                     std::span<const std::int32_t> ramp) override {
    Write("ShadeTriangle", corners, places[0], places[1], places[2], ramp.size());
  }

  SurfaceHandle CreatePolygonRgn(std::span<const DevicePoint> points, int fillMode) override {
    return Made(SurfaceRegion{{points.begin(), points.end()}}, "CreatePolygonRgn", points, fillMode);
  }
  SurfaceHandle CreateRectRgn(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) override {
    return Made(SurfaceRegion{{{left, top}, {right, bottom}}, true}, "CreateRectRgn", left, top, right, bottom);
  }
  void FillRgn(SurfaceHandle region, SurfaceHandle brush) override { Write("FillRgn", region, brush); }
  void SelectClipRgn(SurfaceHandle region) override { Write("SelectClipRgn", region); }

  void SetBkMode(int mode) override { Write("SetBkMode", mode); }
  void SetTextColor(std::int32_t colour) override { Write("SetTextColor", colour); }
  void TextOutA(std::int32_t x, std::int32_t y, std::string_view text) override { Write("TextOutA", x, y, text); }
  DeviceExtent GetTextExtentPoint32A(std::string_view text) override {
    const std::int32_t height = std::abs(objects_.Font().Height);
    std::int32_t characters = 0;
    for (const char byte : text) characters += (byte & 0xC0) != 0x80;
    return {characters * (height / 2), height};
  }

  void SetMapMode(int mode) override { Write("SetMapMode", mode); }
  void SetWindowOrgEx(std::int32_t x, std::int32_t y) override { Write("SetWindowOrgEx", x, y); }
  void SetWindowExtEx(std::int32_t cx, std::int32_t cy) override {
    window_ = {cx, cy};
    Write("SetWindowExtEx", cx, cy);
  }
  void SetViewportOrgEx(std::int32_t x, std::int32_t y) override { Write("SetViewportOrgEx", x, y); }
  void SetViewportExtEx(std::int32_t cx, std::int32_t cy) override { Write("SetViewportExtEx", cx, cy); }
  DeviceExtent GetWindowExtEx() const override { return window_; }
  SurfaceHandle CloseEnhMetaFile() override {
    constexpr SurfaceHandle kMetafile = 1000;
    Write("CloseEnhMetaFile");
    return kMetafile;
  }

 private:
  template <typename... Values>
  void Write(const char* name, const Values&... values) {
    std::ostringstream line;
    line << name;
    [[maybe_unused]] const auto add = [&](const auto& value) {
      if constexpr (std::is_convertible_v<decltype(value), std::span<const DevicePoint>>)
        for (const DevicePoint& point : std::span<const DevicePoint>(value)) line << ' ' << point.x << ' ' << point.y;
      else
        line << ' ' << value;
    };
    (add(values), ...);
    Calls.push_back(line.str());
  }

  template <typename... Values>
  SurfaceHandle Made(SurfaceObjects::Object object, const char* name, const Values&... values) {
    const SurfaceHandle handle = objects_.Add(std::move(object));
    Write(name, values..., "=", handle);
    return handle;
  }

  std::int32_t width_, height_;
  int unitsPerInch_;
  DeviceExtent window_;
  SurfaceObjects objects_;
};

}  // namespace quorvex
