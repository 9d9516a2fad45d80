#pragma once

#include <string>

namespace quorvex {

// The other end of a DesktopDrawer: draws what is asked for on standard input, the file `plotName`, into `pictureName`,
// until that ends. Pictures are 800 pixels wide and 600 high at 96 to the inch; of a report
// it makes a PDF document. It needs no display, whatever the
// environment says of one, and leaves no file behind. Returns the exit code.
int ServeDrawings(const std::string& plotName, const std::string& pictureName, char* programName);

}  // namespace quorvex
