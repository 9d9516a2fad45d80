#pragma once

#include <optional>

#include "files/PlotTemplate.h"

class QWidget;

namespace quorvex {

// Plot Template Settings: which groups of settings a template of the plot is to have. Nothing where the user cancels.
std::optional<TemplateSelection> ChooseTemplateGroups(const PlotPage& plot, QWidget* parent);

}  // namespace quorvex
