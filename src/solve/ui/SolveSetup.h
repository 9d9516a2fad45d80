#pragma once

#include "core/Prompter.h"
#include "solve/SolveChoice.h"

class QWidget;

namespace quorvex {

// Asks for the solver, what residuals count as, and which models a solve takes. False where the user cancels, which
// leaves the choice.
bool ShowSolveSetup(QWidget* over, SolveChoice& choice, char decimalSeparator, Prompter& user);

}  // namespace quorvex
