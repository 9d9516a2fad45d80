#pragma once

#include <string>
#include <string_view>

#include "core/LocaleText.h"
#include "core/Result.h"
#include "project/Project.h"

namespace quorvex {

// Reads a project file of version 5.0 or later, its models' texts in the form of `locale`. What is missing from an
// older version is computed from the data. Fails with the sentence for the user where the file is of another kind or
// version, or is not what it says; a count in the file is never trusted further than the data that follow it.
Result<Project> ReadProject(const std::string& fileName, const LocaleText& locale);

// The same from the bytes of the file that is called `fileName`, as a project that has no file of its own.
Result<Project> ParseProject(std::string_view bytes, const std::string& fileName, const LocaleText& locale);

// The whole project file of version 9.0: sheet, notes, limits, the user-defined models, the solved models and
// interpolations. Reading it back gives equal ones, to the bit of every number; only double quotes in texts come back
// as apostrophes. What a sweep found, beyond its start values, stands in a section of its own behind the end of the
// data, where readers that do not know it have stopped.
std::string ProjectText(const Project& project);

// Saves the project, the file that was there before being kept with "~" behind its name. Returns 0 or the file error's
// number.
int WriteProject(const Project& project, const std::string& fileName);

}  // namespace quorvex
