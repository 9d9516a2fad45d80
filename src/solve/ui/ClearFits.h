#pragma once

#include "solve/FitClearing.h"

class QWidget;

namespace quorvex {

// Picks the solutions to clear. False where the user cancels.
bool ShowClearFits(QWidget* over, FitClearing& clearing, Prompter& user);

}  // namespace quorvex
