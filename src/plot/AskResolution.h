#pragma once

#include <optional>

#include "core/LocaleText.h"
#include "core/Prompter.h"
#include "core/Settings.h"
#include "plot/PictureSize.h"

namespace quorvex {

// Asks at which resolution a picture of so many inches is to be written, 72 to 1200 dots per inch, beginning with what
// was chosen last, or else with the screen's own; the settings keep it. Nothing where the user cancels, or types what
// is none of these, which is refused.
std::optional<PictureSize> AskResolution(const PictureSize& screen, Settings& settings, const LocaleText& locale,
                                         Prompter& user);

}  // namespace quorvex
