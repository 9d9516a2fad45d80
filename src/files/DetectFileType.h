#pragma once

#include <optional>
#include <string>

namespace quorvex {

// What a file is by its first fields; its name plays no part.
struct FileType {
  std::string Version = "0";   // "Quorvex:  Version 9.0"
  std::string Kind = "other";  // "regression" for a project, "plot", or "other": data to be imported
  int Subtype = 0;             // independent variables of a project; 1 for a 2D plot, 2 for a 3D plot
  bool Weighted = false;       // a project with a standard deviation column

  bool operator==(const FileType&) const = default;
};

// Nothing where the file cannot be read or ends before it has told.
std::optional<FileType> DetectFileType(const std::string& path);

}  // namespace quorvex
