#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Prompter.h"
#include "core/Settings.h"
#include "engine/ModelCollection.h"
#include "macro/MacroFields.h"

namespace quorvex {

// The fields that the editor opens with for data of that kind: the solver limits of the preferences stand in them, so
// that the macro does not depend on who runs it.
MacroFields FieldsFor(std::size_t independentVariables, bool weighted, const Settings& preferences,
                      const LocaleText& locale);

// The models of the project that the fields choose, in the project's order.
std::vector<const ModelClass*> ChosenModels(const MacroFields& fields, const ModelCollection& models);

// The macro that the fields and the chosen models of the project make, lines ended by NL, numbers and lists in the
// locale's form. Required fields that are empty get a placeholder of asterisks, solver limits the user's preference.
// Line ends and tabs within a field become blanks, since a statement is one line and its tabs are lost when it is read.
std::string BuildMacroText(const MacroFields& fields, const ModelCollection& models, const Settings& preferences,
                           const LocaleText& locale);

// What the editor finds before a macro is shown or exported.
struct MacroFindings {
  std::vector<std::string> Lines;  // each begins "Warning: " or "ERROR: "
  int Errors = 0, Warnings = 0;

  // "There were 1 error(s) and 2 warning(s)."
  std::string Count() const;
};

MacroFindings CheckMacro(const MacroFields& fields, const ModelCollection& models, const LocaleText& locale);

// The command of the editor's export button: checks, asks whether to go on where something was found, asks for a name
// and writes the file. True when it was written.
bool ExportMacro(const MacroFields& fields, const ModelCollection& models, const Settings& preferences,
                 const LocaleText& locale, Prompter& prompter);

}  // namespace quorvex
