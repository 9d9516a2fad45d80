#pragma once

#include "solve/SolveChoice.h"

class QWidget;

namespace quorvex {

// Asks for the solver, and which models a solve takes. False where the user cancels, which leaves the choice.
bool ShowSolveSetup(QWidget* over, SolveChoice& choice);

}  // namespace quorvex
