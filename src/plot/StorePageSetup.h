#pragma once

#include <string>

#include "core/LocaleText.h"
#include "core/Prompter.h"
#include "core/Settings.h"

namespace quorvex {

// The page setup as the user typed it, numbers in the locale's form.
struct PageSetupEntries {
  std::string Left, Right, Top, Bottom;  // margins
  std::string Units;                     // "inches", "mm" or "cm"
  bool PrintBackground = false;
  int Orientation = 2;  // of plots: 1 upright, 2 lying

  // As the settings have it.
  static PageSetupEntries Read(const Settings& settings, const LocaleText& locale);
};

// Keeps them in the settings. False, and nothing is stored, where a margin is no number, which the user is told.
bool StorePageSetup(const PageSetupEntries& entries, const LocaleText& locale, Settings& settings, Prompter& user);

}  // namespace quorvex
