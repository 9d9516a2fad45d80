#pragma once

#include <optional>
#include <string>

#include "core/Prompter.h"
#include "plot/PlotPage.h"

namespace quorvex {

// What is said where there is none: for a file, and for the clipboard.
inline constexpr const char* kMetafileNotCreated = "Error creating Metafile.";
inline constexpr const char* kMetafileNotCopied = "Error Creating Metafile";

// Records the plot as an enhanced metafile, as large as `target` and measured by it. The file's content; nothing, with
// the message for that, where the plot cannot be drawn, or the target is no millimetre wide.
std::optional<std::string> CreateMetafile(PlotPage& plot, DrawingSurface& target, const char* failure, Prompter& user);

}  // namespace quorvex
