#pragma once

#include <QStringList>

#include "core/Prompter.h"

namespace quorvex {

// Draw the plots of three dimensions into a folder, as files of each ending, and their window in the present scale and
// palette.
bool TakeSurfaces(const QString& folder, const QStringList& endings, Prompter& prompter);
bool TakeSurfaceWindow(const QString& folder, const QString& suffix, Prompter& prompter);

}  // namespace quorvex
