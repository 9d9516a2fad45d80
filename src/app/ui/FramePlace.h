#pragma once

#include "core/Settings.h"

class QWidget;

namespace quorvex {

// Puts the main frame where it was when the program ended last, within reach on the screens that there are now.
void MoveToStoredPlace(QWidget& frame, const Settings& settings);

// Stores the place, and all that leaving the program stores. Returns 0 or the file error's number.
int StorePlace(const QWidget& frame, Settings& settings);

}  // namespace quorvex
