#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/LocaleText.h"
#include "core/Settings.h"
#include "engine/ModelCollection.h"
#include "macro/MacroFault.h"
#include "macro/MacroSetup.h"

namespace quorvex {

// An Assign statement that holds a parameter, as in %P%, and is applied at each run.
struct DeferredAssign {
  std::string Text;  // behind the word, without blanks
  ModelClass* Model;
  std::size_t Line;  // of the macro
};

// The ID of a model that holds a parameter.
struct DeferredID {
  std::string Text;
  ModelClass* Model;
  std::size_t Line;
};

// A Report statement that holds a parameter.
struct DeferredReport {
  std::string Text;  // behind the word
  ModelClass* Model;
  std::size_t Number;  // among the model's, from 0
  std::size_t Line;
};

// What a macro file says.
struct Macro {
  std::string Text;  // of its file
  MacroSetup Setup;
  ModelCollection Models;
  std::vector<DeferredAssign> Deferred;
  std::vector<DeferredID> DeferredIDs;
  std::vector<DeferredReport> DeferredReports;
  int BlockCount = 0;     // B_MODEL statements
  int ModelsCreated = 0;  // blocks that gave a model
};

// Reads the text of a macro file, statement by statement. Numeric solver limits also replace those of `preferences`,
// for the life of the process. What is wrong with a statement goes to `log`, and reading goes on. False only where no
// line reads B_MACRO, or nothing follows it. Where `notes` are wanted they tell the same by lines, and what a log is
// not told: words that may have been meant, values that do nothing, statements of which another one counts.
bool ReadMacro(std::string_view text, const LocaleText& locale, Settings& preferences, Macro& macro, std::string& log,
               MacroNotes* notes = nullptr);

}  // namespace quorvex
