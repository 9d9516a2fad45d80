#pragma once

#include <span>
#include <string>
#include <string_view>

#include "core/Settings.h"

namespace quorvex {

// Where the settings are kept, as INI text: $QUORVEX_SETTINGS when set, else quorvex/quorvex.ini in $XDG_CONFIG_HOME or
// ~/.config. Empty where the environment names no home.
std::string SettingsFileName();

// What is stored, read once at start. A file that is missing or cannot be read gives the defaults, and a line that
// makes no sense is skipped. Of a key that stands twice the first counts.
Settings LoadSettings();

// Stores these keys of one section with the texts in force, in this order; everything else in the file stays, comments
// included. Writes beside the file and renames, so that a failure keeps the old one. Returns 0 or the file error's
// number.
int SaveSettings(const Settings& settings, std::string_view section, std::span<const std::string_view> keys);

// Place and size of the main frame, in window units.
struct FrameGeometry {
  double Left = 0, Top = 0, Height = 0, Width = 0;
};

// The stored place and size, fitted to a screen: what is greater than it becomes the screen's, and where no size was
// ever stored the frame takes three quarters of it. All in window units.
FrameGeometry StartupGeometry(const Settings& settings, double screenHeight, double screenWidth);

// What leaving the program stores: the frame, the project folder and the choices of the solve setup. The frame's
// numbers are written with the 7 digits of a 32-bit real. Returns 0 or the file error's number.
int SaveStartupSettings(Settings& settings, const FrameGeometry& frame);

// Stores what was changed since the settings were loaded or this was last called. Returns 0 or the file error's number;
// then the changes wait for the next call.
int SaveChanges(Settings& settings);

}  // namespace quorvex
