#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "code/CodeModel.h"

namespace quorvex {

// A model as a typeset formula, line by line: the model, then its supporting functions. Coefficients stand by their
// names, digits at the end of a name as a subscript and Greek letters as such; a comparison used as a number, which is
// -1 or 0, is -[x < 1]. What mathematics has no sign for, such as "mod" on rounded numbers, is a function that
// FormulaNotes tells about.

// What stands between \[ and \], or between $$ and $$: an "aligned" environment of amsmath.
std::string LatexFormula(const CodeModel& model);

// A "math" element of MathML, shown as a block; well-formed XML, good in HTML as it is.
std::string MathMLFormula(const CodeModel& model);

// What the signs of the formula mean that not everybody knows, a sentence each, in plain text.
std::vector<std::string> FormulaNotes(const CodeModel& model);

// The names of the coefficients as the formula has them, in their order, and a number as in it: "a_{1}",
// "1.5\times 10^{-9}" of up to 15 digits. For mathematics in a line of text.
std::vector<std::string> LatexCoefficients(const CodeModel& model);
std::string LatexNumber(double value);

}  // namespace quorvex
