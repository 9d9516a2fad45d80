#pragma once

#include <string>
#include <string_view>

#include "core/Session.h"

namespace quorvex {

// Writes a picture of the plot that has this text as its file, 800 pixels by 600 at 96 to the inch, of the kind that
// the ending of the name tells. Returns why there is none, in a line; empty where it was written.
std::string DrawPlotText(std::string_view plotText, const std::string& pictureName, const Session& session);

// The other end of a DesktopDrawer: draws what is asked for on standard input, in a folder that both know, until that
// ends. It needs no display, whatever the environment says of one. Returns the exit code.
int ServeDrawings(const std::string& folder, char* programName);

}  // namespace quorvex
