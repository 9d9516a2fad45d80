#pragma once

#include "core/Settings.h"

class QWidget;

namespace quorvex {

// Guidance on plot windows, over `parent`; closing it stores whether it comes again. Nothing happens where the user has
// had it hidden ("hideplotinfo").
void ShowPlotInfo(QWidget* parent, Settings& settings);

}  // namespace quorvex
