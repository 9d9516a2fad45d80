#pragma once

#include <vector>

#include "desktop/ProjectMenus.h"

namespace quorvex {

// The Plot menu. The windows that it opens hold copies, so they stay as they are while the project changes, and close
// with the project's window.
std::vector<ProjectCommand> PlotMenu();

}  // namespace quorvex
