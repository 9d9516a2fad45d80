#pragma once

#include "solve/FailedSolve.h"

class QWidget;

namespace quorvex {

// Tells what a solve failed at, why, and from which estimates; returns where the user goes from there.
WayOn ShowSolveFailed(QWidget* over, FailedSolve& failed);

}  // namespace quorvex
