#pragma once

#include <optional>

#include "project/ProjectKind.h"

class QWidget;

namespace quorvex {

// Asks for the kind of a new project: how many independent variables it has, and whether a standard deviation. Nothing
// where the user cancels.
std::optional<ProjectKind> AskProjectKind(QWidget* over, const ProjectKind& proposed);

}  // namespace quorvex
