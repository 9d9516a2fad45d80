#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/LocaleText.h"
#include "macro/MacroLog.h"
#include "macro/MacroReader.h"
#include "macro/ParameterFile.h"

namespace quorvex {

// A statement in whose text a parameter run substitutes. A change of an input makes the run read and solve anew.
struct SubstitutedField {
  std::string_view Keyword;
  bool IsInput;
  bool IsLogged = true;

  std::string& In(MacroSetup& setup) const;
};

// In the order of substitution.
std::span<const SubstitutedField> SubstitutedFields();
bool IsSubstituted(const MacroStatement& statement);

// The table of a series: a parameter SERIES, a row for each name. Nothing that is read depends on it, and in the names
// of files its values have no '/'.
ParameterTable TableOfSeries(const std::vector<std::string>& names);

// `text` with the row's values (from 0) in the places of their names, as far as that makes it no longer than a text may
// be.
std::string WithParameters(std::string text, const ParameterTable& table, std::size_t row);

// The same of the name of a file.
std::string FileWithParameters(std::string file, const ParameterTable& table, std::size_t row);

// Name and value of a row (from 0) as answers may tell them: "***" for what is or holds the password of a connection.
// `source` is the DataFile of the macro before the row's values were put into it.
std::vector<std::pair<std::string, std::string>> ShownParameters(const ParameterTable& table, std::size_t row,
                                                                 const std::string& source,
                                                                 const MacroSetup& substituted);

// What becomes of a run then.
inline constexpr std::string_view kTooLongText = "The parameters make a text too long.";

// Puts the values of a row (from 0) into the macro, and tells the log. False where a text outgrows all bounds.
bool SubstituteParameters(Macro& macro, const ParameterTable& table, std::size_t row, const LocaleText& locale,
                          MacroLog& log);

}  // namespace quorvex
