#include "code/Formula.h"

namespace quorvex {

std::string LatexFormula(const CodeModel&) { return {}; }
std::string MathMLFormula(const CodeModel&) { return {}; }
std::string LatexName(const CodeModel&, const std::string& name) { return name; }
std::string LatexNumber(double) { return {}; }

}  // namespace quorvex
