#pragma once

#include <cstdlib>
#include <string>

namespace quorvex {

// A variable of the environment, empty where it is not set.
inline std::string EnvironmentText(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

// The program's folder in the user's base directory that `variable` names, as in XDG_CONFIG_HOME; where it is not set,
// or relative and so to be ignored, in `fallback` of the home folder, as in "/.config". Empty without a home.
inline std::string UserFolder(const char* variable, const char* fallback) {
  std::string folder = EnvironmentText(variable);
  if (!folder.starts_with('/')) {
    const std::string home = EnvironmentText("HOME");
    if (home.empty()) return "";
    folder = home + fallback;
  }
  return folder + "/quorvex";
}

}  // namespace quorvex
