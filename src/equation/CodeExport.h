#pragma once

#include <ctime>
#include <span>
#include <string>
#include <string_view>

#include "core/LocaleText.h"
#include "equation/CodeLibrary.h"
#include "equation/DataStatistics.h"
#include "equation/Expression.h"

namespace quorvex {

// A model, solved or not, as an exported function tells it.
struct CodeExport {
  const Expression& Compiled;
  std::span<const double> Values;    // of the coefficients
  const DataStatistics& Statistics;  // of the input, for words such as "xmean"
  double R2, R2Adjust, StdErr;
  const LocaleText& Locale;
};

// The source of a function called `name` that computes the model, dated `created`, and of the library functions that it
// needs. Of a model of several variables it takes an array whose index 1 is x1. Lines end with NL. Numbers have a
// decimal point, whatever the locale.
//
// The C text is C99. The words that stand for statistics of the data are constants beside the coefficients. Names that
// clash are changed (NamesFor), which a comment tells, as it tells where values differ from the program's (CodeNotes).
std::string FunctionSource(const CodeExport& model, ExprType language, std::string_view name, const std::tm& created);

// A name for a function from the name of the file that it goes to: without folder and extension, "_" for what no name
// may hold.
std::string FunctionName(std::string_view file);

}  // namespace quorvex
