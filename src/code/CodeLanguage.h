#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "code/CodeModel.h"
#include "core/Result.h"

namespace quorvex {

// How tightly the parts of an expression hold together, the loosest first.
enum class Binding { Loose, Sum, Product, Sign, Power, Atom };

// How a language writes a word of the equation language: an operator ("^", "mod", "and", ...), "neg", or a function.
// Sums, products and signs are the same everywhere and need no form. "^whole" is a power whose exponent is a whole
// number as written, without a point; languages that have no such form use that of "^".
struct CodeForm {
  std::string_view Word;
  // $1, $2, $3: the operands as they are; #1, #2, #3: in parentheses unless they are atoms; @1, @2, @3: rounded
  std::string_view Text;
  Binding Binds = Binding::Atom;
  std::string_view Needs = {};  // names of definitions that the file must carry, separated by blanks
};

// What a file carries beside the model's function where the model needs it.
struct CodeDefinition {
  std::string_view Name;  // no other name in the file is like it
  std::string_view Text;  // lines, without an end behind the last
  std::string_view Needs = {};
};

// How a language says what a truth is, which this program's models use as numbers: -1 for true, 0 for false.
struct CodeTruth {
  std::string_view OfNumber;  // "#1 != 0"
  std::string_view AsNumber;  // "(-1.0 if $1 else 0.0)"
  std::string_view And, Or, Not;
};

// A choice by statements, for languages whose expressions know none.
struct CodeStatements {
  std::string_view If, Else, End;  // $1 is the condition
  std::string_view Assign;         // $1 = $2
};

// The lines of a function and what shows its proof. What is empty is not written.
struct CodeFrame {
  std::string_view Function = {};        // $1 is its name, $2 what it takes, $3 the first of that
  std::string_view Variable = "$1";      // one of these, by its name
  std::string_view Constant = {};        // $1 and its value $2: a coefficient, or what the fit knows of its data
  std::string_view Support = {};         // $1 is the name of a supporting function's value, 0 at first
  std::string_view Choice = {};          // $1 is the name of what a choice by statements comes to
  std::string_view SupportAtFirst = {};  // where the line of Support can't give it that value
  std::string_view Result = {};          // $1 in the function $2
  std::string_view End = {};             // $1 is the function's name
  std::string_view Proof = {};           // the call $1 and its value $2
};

struct CodeBody;

// A language that models are written in: what its expressions look like, and the frame around them.
struct CodeLanguage {
  std::string_view Name;        // as the user reads it
  std::string_view Extension;   // of its files, without a point
  std::string_view Comment;     // begins a line of it
  bool FoldsCase = false;       // of names
  std::size_t LongestName = 0;  // in characters; 0: any
  std::span<const std::string_view> Reserved = {};
  std::span<const CodeForm> Forms = {};
  std::span<const CodeDefinition> Definitions = {};
  CodeTruth Truth = {};
  std::string_view Times = " * ", Over = " / ";
  std::string_view Choice = {};  // "($2 if $1 else $3)"; empty: by statements
  std::string_view Save = {};    // of a supporting function where it is first met: "($1 := $2)"; empty: by a statement
  CodeStatements Statements = {};
  std::string_view Rounded = {};  // #1, to whole numbers, ties to even; where the forms ask for it
  bool Substitutes = false;       // formulas of a sheet: cells A2, B2, ... for variables, and no other names at all
  CodeFrame Frame = {};
  std::string (*Number)(double value);
  // The whole file. A text that is any text goes through CommentText or a string of the language.
  std::string (*Write)(const CodeModel& model, const CodeBody& body, const CodeLanguage& language);
};

// All of them, in the order in which menus show them.
std::span<const CodeLanguage* const> CodeLanguages();

// The language of a file by its extension, in any case; null where there is none.
const CodeLanguage* LanguageOfFile(std::string_view file);

// A model as that language has it, ready to be framed.
struct CodeBody {
  std::string Function;
  std::vector<std::string> Variables;                     // names of the independent ones
  std::vector<std::string> Coefficients;                  // in the order of the model's
  std::vector<std::pair<std::string, double>> DataWords;  // statistics of the data that the model speaks of
  std::vector<std::string> Supports, Choices;             // further names that the statements assign to
  std::vector<std::string> Statements;                    // ahead of the result, indented by blanks in steps of four
  std::string Result;                                     // an expression
  std::vector<const CodeDefinition*> Definitions;         // each behind those that it needs
  bool TooLong = false;                                   // more than any sheet takes; Result is then of no use
  std::vector<std::string> Unset;                         // supporting functions used where none has computed them
  std::vector<std::string> Missing;                       // words that the language has nothing for
  std::vector<std::string> Remarks;  // on names that had to change and on what is missing, a sentence each
};

// `function` is the name that the user wants, any text.
CodeBody GenerateBody(const CodeModel& model, const CodeLanguage& language, std::string_view function);

// The model as a file of that language, lines ended by LF. Computes what the program computes: comparisons are -1 and
// 0, logic works on bits, "mod" and "\" round first. What the language has nothing for stands as a call of a function
// that the user must supply, which a comment tells.
std::string WriteCode(const CodeModel& model, const CodeLanguage& language, std::string_view function);

// The same by the ending of a file's name, the function called like the file. Fails with a sentence where no language
// has that ending.
Result<std::string> CodeForFile(ModelClass& model, std::string_view file);

// Why a name says no language: "The code 'fit.xyz' is not written: its name ends in none of .py, .r or .js."
std::string UnknownLanguageText(std::string_view file);

// Any text, fit for a comment of one line: without line ends, control characters and what would end the comment.
std::string CommentText(std::string_view text);

// `text` as lines of comment.
std::string CommentLines(const CodeLanguage& language, std::string_view text);

// The head of a file as all languages have it, as lines of comment: title, definition, remarks on fit and names.
std::string CommentHead(const CodeModel& model, const CodeBody& body, const CodeLanguage& language);

// The definitions that the body needs, each behind an empty line.
std::string DefinitionText(const CodeBody& body);

// What stands in the function, line by line without an end: values, declarations, statements, result.
std::vector<std::string> FunctionLines(const CodeModel& model, const CodeBody& body, const CodeLanguage& language);

// The function by the frame, its lines indented by four blanks.
std::string FunctionText(const CodeModel& model, const CodeBody& body, const CodeLanguage& language);

// Of the proof, where the model has one.
std::string ProofText(const CodeModel& model, const CodeBody& body, const CodeLanguage& language);

// Head, definitions, function and proof, which is a file of most languages.
std::string WriteFramed(const CodeModel& model, const CodeBody& body, const CodeLanguage& language);

// Texts in a row, with ", " between them.
std::string CommaList(std::span<const std::string> texts);

// The call that the proof value belongs to: "f(1.0, 2.0)".
std::string ProofCall(const CodeModel& model, const CodeBody& body, const CodeLanguage& language);

// The shortest text that reads back to the same value, with a point or an exponent so that it is no whole number.
std::string RealNumber(double value);
// The same, whole numbers without a point.
std::string PlainNumber(double value);
// Whether 15 digits read back to another value.
bool HasFurtherDigits(double value);

}  // namespace quorvex
