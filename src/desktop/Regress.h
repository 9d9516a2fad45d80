#pragma once

#include "solve/ModelPick.h"

namespace quorvex {

class quorvexWindow;

// Picks the one model to solve, of the window's project. From here its user goes on to the user-defined models, and to
// estimates of their own. False where they cancel.
bool ShowRegress(quorvexWindow& window, ModelPick& pick);

}  // namespace quorvex
