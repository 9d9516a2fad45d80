#pragma once

#include <optional>

#include "core/LocaleText.h"
#include "files/PlotDocument.h"

class QWidget;

namespace quorvex {

// frmPlotEquation: asks for an equation over a range, and the template that its plot gets. What cannot be plotted as it
// is filled in is refused, and the dialog stays open. Nothing where the user cancels.
std::optional<PlotDocument> ShowPlotEquation(QWidget* parent, Settings& settings, const LocaleText& locale,
                                             Prompter& user);

}  // namespace quorvex
