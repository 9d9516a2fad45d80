#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/Settings.h"

namespace quorvex {

// The files used last, the latest first, kept in a section of the settings under "RecentFile1" and so on.
inline constexpr std::string_view kRecentProjects = "Project Files";
inline constexpr std::string_view kRecentPlots = "Plot Files";
inline constexpr std::string_view kRecentTemplates = "Template Files";

std::vector<std::string> RecentFiles(const Settings& settings, std::string_view section);

// Puts a file first, or takes one out that is gone.
void AddRecentFile(Settings& settings, std::string_view section, const std::string& fileName);
void RemoveRecentFile(Settings& settings, std::string_view section, const std::string& fileName);

}  // namespace quorvex
