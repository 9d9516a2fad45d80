#pragma once

#include <span>
#include <string>
#include <string_view>

namespace quorvex {

// The languages that a model is exported to. The numbers are part of the published interface.
enum class ExprType { C = 0, Basic = 1 };

// A function of the equation language as exported code knows it.
struct CodeFunction {
  std::string_view Word;
  std::string_view Basic;    // the name of that language's own function of the same value, or empty: then the exported
  std::string_view C;        // file carries a definition of it
  std::string_view Subject;  // of the definition's comment
  std::string_view BasicBody;  // of the definition; empty where the user must supply it
  std::string_view CBody;
  std::string_view Parameters;  // their names, separated by blanks

  std::string_view OwnName(ExprType language) const { return language == ExprType::C ? C : Basic; }
  // The name that a call has in the exported code.
  std::string_view CallName(ExprType language) const;
};

// The row of a word in lower case. Knows every function that a user may write.
const CodeFunction& FindCodeFunction(std::string_view word);

// Append to `file`, the text of the file so far, a definition for each function in `FnList` (words of the language, the
// first of a repetition counts). A special function has an empty definition, for the user to fill; in C it gives NaN.
void WriteBasicLibrary(std::span<const std::string> FnList, std::string& file);
void WriteCLibrary(std::span<const std::string> FnList, std::string& file);

// Declarations of what WriteCLibrary defines, for the head of a file.
void WriteCPrototypes(std::span<const std::string> FnList, std::string& file);

}  // namespace quorvex
