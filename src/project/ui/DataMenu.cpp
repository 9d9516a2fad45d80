// The Data menu: what computes new values for the sheet, and import.

#include "project/ui/ProjectMenus.h"
#include "project/ui/quorvexWindow.h"

namespace quorvex {

std::vector<ProjectCommand> DataMenu() { return {}; }

}  // namespace quorvex
