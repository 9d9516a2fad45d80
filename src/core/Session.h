#pragma once

#include "core/LocaleText.h"
#include "core/Settings.h"

namespace quorvex {

// What one run of the program shares. `Main` makes one and hands down the part a callee needs.
struct Session {
  Settings Preferences;
  LocaleText Locale;
};

}  // namespace quorvex
