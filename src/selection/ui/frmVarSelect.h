#pragma once

#include "core/LocaleText.h"
#include "core/Prompter.h"
#include "core/Settings.h"
#include "sheet/DataSheet.h"

class QWidget;

namespace quorvex {

// The Variable Selection command: asks how to search, and shows the search. Settings and prompter outlive the call.
void ShowVariableSelection(QWidget* over, const DataSheet& sheet, const LocaleText& locale, Settings& settings,
                           Prompter& user);

}  // namespace quorvex
