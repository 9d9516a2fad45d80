#pragma once

#include <string_view>
#include <vector>

#include "code/CodeLanguage.h"
#include "core/Clipboard.h"
#include "core/Prompter.h"
#include "core/Settings.h"
#include "engine/ModelClass.h"
#include "solve/SolvedList.h"

namespace quorvex {

// How the equation is written as text, as the user left it last: names in the place of values, and whether the
// parameters follow.
struct EquationTextOptions {
  bool Names = false;
  bool AppendParameters = false;
};

EquationTextOptions ReadTextOptions(const Settings& settings);
void StoreTextOptions(Settings& settings, const EquationTextOptions& options);

std::string EquationText(const ModelClass& model, const EquationTextOptions& options);

// Puts the model on the clipboard as a spreadsheet formula whose X (of several, X1) stands in that cell, and tells the
// user how to go on. False, after a word to the user, where there is none.
bool CopyExcelFormula(const ModelClass& model, std::string_view column, std::string_view row, bool XInColumns,
                      Clipboard& clipboard, Prompter& user);

// Where the formula's values part from the program's, a line each; "" for most models.
std::string ExcelNotes(const ModelClass& model);

// The models that an export may mean: the selected one; where it isn't one that is selected, those that are solved; and
// where none is, the user-defined ones. Refused where there is none.
std::vector<ModelClass*> ModelsToExport(const Project& project, const std::vector<SolvedItem>& selected,
                                        const std::vector<SolvedItem>& solved, Prompter& user);

// The language that the user had last, or the first; and the model in it, the function called "model".
const CodeLanguage& ReadCodeLanguage(const Settings& settings);
void StoreCodeLanguage(Settings& settings, const CodeLanguage& language);
std::string ModelCode(ModelClass& model, const CodeLanguage& language);

// Writes the model to a file that the user names, in that language or in another one that the name ends in. False where
// nothing was written.
bool SaveCode(ModelClass& model, const CodeLanguage& language, Prompter& user);

// Writes the model as a function in that language to a file that the user names. False where nothing was written.
bool ExportCode(const ModelClass& model, ExprType language, Prompter& user);

}  // namespace quorvex
