#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "core/LocaleText.h"
#include "core/Prompter.h"
#include "core/Settings.h"
#include "plot/PlotPage.h"
#include "project/Project.h"
#include "sheet/DataSheet.h"

class QWidget;

namespace quorvex {

// The dialogs that ask what a plot shall show, over `parent`. What they cannot do as it is filled in they refuse, and
// stay open. Nothing where the user cancels.

// frmPlotSelect: columns of the sheet by their names.
std::unique_ptr<PlotPage> ShowPlotSelect(QWidget* parent, const DataSheet& sheet, const Settings& settings,
                                         const LocaleText& locale, Prompter& user);

// frmScatterType: one of the ScatterTypes, by its number.
std::optional<std::size_t> ShowScatterType(QWidget* parent, const DataSheet& sheet);

// GraphList: series for a plot that is open, of what its project has. Refused where that is nothing.
std::optional<std::vector<PlotSeries>> ChooseGraphs(QWidget* parent, Project& project, const PlotPage& plot,
                                                    const Settings& settings, Prompter& user);

}  // namespace quorvex
