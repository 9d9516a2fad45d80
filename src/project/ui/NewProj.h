#pragma once

#include <QString>
#include <optional>

#include "project/ProjectKind.h"

class QWidget;

namespace quorvex {

// Asks for the kind of a project: how many independent variables it has, and whether a standard deviation. Nothing
// where the user cancels. A `note` stands above the buttons.
std::optional<ProjectKind> AskProjectKind(QWidget* over, const ProjectKind& proposed,
                                          const QString& title = "New Project", const QString& note = {});

}  // namespace quorvex
