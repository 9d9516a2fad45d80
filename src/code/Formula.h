#pragma once

#include <string>

#include "code/CodeModel.h"

namespace quorvex {

// A model as a typeset formula, line by line: the model, then its supporting functions. Coefficients stand by their
// names, digits at the end of a name as a subscript and Greek letters as such; a comparison used as a number, which is
// -1 or 0, is -[x < 1]. What follows no notation of mathematics, such as "mod" on rounded numbers, is a function that
// FormulaNotes tells about.

// What stands between \[ and \], or between $$ and $$: an "aligned" environment of amsmath.
std::string LatexFormula(const CodeModel& model);

// A "math" element of MathML, to be shown as a block; well-formed XML, good in HTML as it is.
std::string MathMLFormula(const CodeModel& model);

// A name of the model as it stands in the formula, and a number as in it: "a_{1}", "1.5\times10^{-9}".
std::string LatexName(const CodeModel& model, const std::string& name);
std::string LatexNumber(double value);

}  // namespace quorvex
