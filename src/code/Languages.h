#pragma once

#include "code/CodeLanguage.h"

namespace quorvex {

// Each in a file of its own name.
extern const CodeLanguage kPython;
extern const CodeLanguage kR;
extern const CodeLanguage kJavaScript;
extern const CodeLanguage kJulia;
extern const CodeLanguage kMatlab;
extern const CodeLanguage kFortran;
extern const CodeLanguage kRust;
extern const CodeLanguage kLatex;
extern const CodeLanguage kSpreadsheet;

}  // namespace quorvex
