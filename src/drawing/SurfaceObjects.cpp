#include "drawing/SurfaceObjects.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace quorvex {
namespace {

enum Stock : SurfaceHandle { kNone, kPen, kBrush, kFont, kHollowBrush, kStockEnd };

bool IsFree(const SurfaceObjects::Object& object) { return std::holds_alternative<std::monostate>(object); }

}  // namespace

SurfaceObjects::SurfaceObjects()
    : objects_{SurfacePen{}, SurfaceBrush{0xFFFFFF}, LogicalFont{}, SurfaceBrush{}},
      pen_(kPen),
      brush_(kBrush),
      font_(kFont) {}

SurfaceHandle SurfaceObjects::Add(Object object) {
  const auto place = std::find_if(objects_.begin(), objects_.end(), IsFree);
  const auto handle = static_cast<SurfaceHandle>(place - objects_.begin()) + 1;
  if (place == objects_.end())
    objects_.push_back(std::move(object));
  else
    *place = std::move(object);
  return handle;
}

SurfaceHandle SurfaceObjects::Stock(int index) const {
  constexpr int kHollow = 5;  // its number among the stock objects
  assert(index == kHollow);
  return index == kHollow ? kHollowBrush : kNone;
}

SurfaceHandle SurfaceObjects::Select(SurfaceHandle handle) {
  const Object& object = At(handle);
  assert(!IsFree(object) && !std::holds_alternative<SurfaceRegion>(object));
  if (std::holds_alternative<SurfacePen>(object)) return std::exchange(pen_, handle);
  if (std::holds_alternative<SurfaceBrush>(object)) return std::exchange(brush_, handle);
  return std::exchange(font_, handle);
}

void SurfaceObjects::Delete(SurfaceHandle handle) {
  assert(handle >= kStockEnd && handle != pen_ && handle != brush_ && handle != font_ && !IsFree(At(handle)));
  objects_[handle - 1] = std::monostate{};
}

std::size_t SurfaceObjects::Count() const {
  return static_cast<std::size_t>(
      std::count_if(objects_.begin() + (kStockEnd - 1), objects_.end(), [](const Object& o) { return !IsFree(o); }));
}

}  // namespace quorvex
