#pragma once

#include <string>
#include <vector>

#include "core/Settings.h"
#include "project/Project.h"
#include "project/ProjectKind.h"

namespace quorvex {

// The kind that the preferences name.
ProjectKind DefaultKind(const Settings& settings);
// The kind to propose for a file with columns of these names: the last one is Y, but for one that is named as its
// standard deviation.
ProjectKind KindForColumns(const std::vector<std::string>& columns);

// A new project as the preferences want it: with the models of the user's own file where it is to have them, and the
// solver's limits.
Project FreshProject(const ProjectKind& kind, const std::string& name, const Settings& settings,
                     const LocaleText& locale);

// "Untitled", or "Untitled 2" and so on where that is taken.
std::string NextUntitled(const std::vector<std::string>& taken);

}  // namespace quorvex
