#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <variant>
#include <vector>

#include "drawing/DrawingSurface.h"

namespace quorvex {

struct SurfacePen {
  std::int32_t Width = 1;
  std::int32_t Colour = 0;
  int Style = 0;
};

struct SurfaceBrush {
  std::optional<std::int32_t> Colour;  // nothing for the hollow brush
  bool operator==(const SurfaceBrush&) const = default;
};

struct SurfaceRegion {
  std::vector<DevicePoint> Corners;
  bool Rectangular = false;  // then the corners are the upper left and the lower right
};

// The objects that a surface has made, what they are, and which are in use.
class SurfaceObjects {
 public:
  using Object = std::variant<std::monostate, SurfacePen, SurfaceBrush, LogicalFont, SurfaceRegion>;

  SurfaceObjects();

  SurfaceHandle Add(Object object);
  SurfaceHandle Stock(int index) const;
  SurfaceHandle Select(SurfaceHandle handle);  // a pen, brush or font; returns the one of its kind before it
  void Delete(SurfaceHandle handle);

  const SurfacePen& Pen() const { return std::get<SurfacePen>(At(pen_)); }
  const SurfaceBrush& Brush() const { return Brush(brush_); }
  const LogicalFont& Font() const { return std::get<LogicalFont>(At(font_)); }
  const SurfaceBrush& Brush(SurfaceHandle handle) const { return std::get<SurfaceBrush>(At(handle)); }
  const SurfaceRegion& Region(SurfaceHandle handle) const { return std::get<SurfaceRegion>(At(handle)); }

  bool IsRegion(SurfaceHandle handle) const { return std::holds_alternative<SurfaceRegion>(At(handle)); }
  std::size_t Count() const;  // of those made and not yet deleted

 private:
  const Object& At(SurfaceHandle handle) const { return objects_.at(handle - 1); }

  std::deque<Object> objects_;  // by handle, from 1, each at its place for good; the stock first
  SurfaceHandle pen_, brush_, font_;
};

}  // namespace quorvex
