#pragma once

#include <QString>

#include "core/Prompter.h"

namespace quorvex {

// Draw the plots of three dimensions into a folder, and their window in the present scale and palette.
bool TakeSurfaces(const QString& folder, Prompter& prompter);
bool TakeSurfaceWindow(const QString& folder, const QString& suffix, Prompter& prompter);

}  // namespace quorvex
