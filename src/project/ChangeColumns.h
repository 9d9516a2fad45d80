#pragma once

#include "project/Project.h"
#include "project/ProjectKind.h"
#include "sheet/SheetEdit.h"

namespace quorvex {

// Gives the project that number of independent variables, and a standard deviation or none. Columns are added empty,
// and X's are taken away from the last one on. All others keep their cells, headers and formats, a default header being
// the one of the new number. As with any change of the data the solutions go; with another number of variables so do
// the user's models, and the catalogue is that of the new number.
//
// What would be lost is told first, and the user asked. False where they don't want that, or the columns are there.
bool ChangeColumns(Project& project, const SheetEdit& edit, const ProjectKind& kind,
                   const UndoLabel& label = UndoOperation::ChangeColumns);

}  // namespace quorvex
