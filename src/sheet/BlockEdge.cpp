#include "sheet/BlockEdge.h"

namespace quorvex {

CellPlace BlockEdge(const GridCells& cells, CellPlace from, int rowStep, int colStep, CellPlace last) {
  const auto next = [&](CellPlace place) {
    // Row or column 0 is as far outside as one behind the last.
    return CellPlace{place.Row + static_cast<std::size_t>(rowStep), place.Col + static_cast<std::size_t>(colStep)};
  };
  const auto isInside = [&](CellPlace place) {
    return place.Row >= 1 && place.Row <= last.Row && place.Col >= 1 && place.Col <= last.Col;
  };
  const auto isFilled = [&](CellPlace place) { return !GridCells::IsEmpty(cells.Cell(place.Row, place.Col)); };

  const bool withinBlock = isFilled(from) && isInside(next(from)) && isFilled(next(from));
  CellPlace place = from;
  while (isInside(next(place))) {
    if (withinBlock && !isFilled(next(place))) break;
    place = next(place);
    if (!withinBlock && isFilled(place)) break;
  }
  return place;
}

}  // namespace quorvex
