#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Result.h"
#include "core/Settings.h"
#include "plot/PlotClass.h"
#include "sheet/DataSheet.h"

namespace quorvex {

enum class PlotType { Markers, Lines, LinesAndMarkers };

// Columns of a sheet that were chosen by their names for a plot, counted from 1. A series is one column on the
// horizontal axis, or kRowNumbers, with the one on the vertical axis.
struct ColumnsPlot {
  std::optional<std::size_t> Vertical;
  std::vector<std::size_t> Horizontal;
  PlotType Type = PlotType::Markers;

  // Fails where no column was chosen for one of the axes, and as ColumnPoints. Lines go from row to row.
  Result<PlotClass> Make(const DataSheet& sheet, const Settings& settings, const LocaleText& locale = {}) const;
};

}  // namespace quorvex
