#include "drawing/FacetReach.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>

namespace quorvex {
namespace {

double TwiceTheArea(const std::vector<DevicePoint>& facet) {
  double area = 0;
  for (std::size_t i = 0; i < facet.size(); ++i) {
    const DevicePoint &a = facet[i], &b = facet[i + 1 < facet.size() ? i + 1 : 0];
    area += 1.0 * a.x * b.y - 1.0 * b.x * a.y;
  }
  return area;
}

}  // namespace

std::vector<std::vector<DevicePoint>> ReachUnderLater(std::span<const std::vector<DevicePoint>> facets) {
  // The edges of later facets, all of which are gone round the same way, with the first that has each.
  struct Place {
    std::size_t Facet, Corner;  // where the edge begins
  };
  std::map<std::array<std::int32_t, 4>, Place> later;
  std::vector<std::vector<DevicePoint>> turned(facets.begin(), facets.end()), reaching(facets.size());
  for (std::size_t f = facets.size(); f-- > 0;) {
    std::vector<DevicePoint>&facet = turned[f], &reach = reaching[f];
    if (TwiceTheArea(facet) < 0) std::reverse(facet.begin(), facet.end());
    const auto next = [&](std::size_t i) { return facet[(i + 1) % facet.size()]; };
    for (std::size_t i = 0; i < facet.size(); ++i) {
      const DevicePoint from = facet[i], to = next(i);
      reach.push_back(from);
      const auto neighbour = later.find({to.x, to.y, from.x, from.y});
      if (neighbour == later.end() || from == to) continue;
      const std::vector<DevicePoint>& other = turned[neighbour->second.Facet];
      for (std::size_t k = 2; k < other.size(); ++k)
        reach.push_back(other[(neighbour->second.Corner + k) % other.size()]);
    }
    for (std::size_t i = 0; i < facet.size(); ++i) later[{facet[i].x, facet[i].y, next(i).x, next(i).y}] = {f, i};
  }
  return reaching;
}

}  // namespace quorvex
