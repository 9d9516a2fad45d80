#pragma once

class QWidget;

namespace quorvex {

// The property of a window that has an order of its own, which stays.
inline constexpr const char* kOwnTabOrder = "ownTabOrder";

// Lets Tab go through the controls of a window in the order of its layouts, which is how the eye goes: boxes from their
// beginning to their end, grids and forms row by row, tabs before their pages. Controls outside of layouts come behind
// them, in the order they were in.
void TabAsLaidOut(QWidget& window);

}  // namespace quorvex
