#pragma once

#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "core/DerivativeKind.h"
#include "core/LocaleText.h"
#include "macro/MacroFields.h"
#include "macro/MacroSetup.h"

namespace quorvex {

// The statements of a macro, model blocks aside, a row each: the reader, the writer, the editor and its findings all go
// by these rows. What holds where a macro doesn't have a statement is the initial state of MacroSetup.

// Lines, a statement each, which the reader joins.
struct LinesValue {
  std::string MacroSetup::*Read;
  std::string MacroFields::*Typed;
  std::string_view Indent = {};       // in front of each, as it is read
  std::string_view Placeholder = {};  // written where nothing was typed; without one nothing is written
};

enum class EmptyText { IsTaken, IsIgnored, MeansDefault };

struct TextValue {
  std::string MacroSetup::*Read;
  std::string MacroFields::*Typed;
  std::string_view Placeholder = {};           // written where nothing was typed; without one nothing is written
  EmptyText Empty = EmptyText::IsTaken;        // what a statement without a value does
  bool LowerCase = false;                      // as it is read
  bool IsList = false;                         // in the locale's form
  bool MacroSetup::*Given = nullptr;           // set by a text that is not empty
  std::string MacroSetup::*AsTyped = nullptr;  // where one that is read in lower case stays as it was
};

// A limit of the solver. One that can't be read leaves that of the preferences in force, which one that can replaces.
template <typename Number>
struct LimitValue {
  Number MacroSetup::*Read;
  Number Settings::*Preference;
  std::string MacroFields::*Typed;
};

// A number within the statement's range. What is none is told in the log and leaves the default.
template <typename Number>
struct NumberValue {
  Number MacroSetup::*Read;
  std::string MacroFields::*Typed;
  std::string_view Wanted;  // what it may be, as a user is told
};

// The number of independent variables, whose catalogue the reader then loads.
struct VariablesValue {
  int MacroSetup::*Read;
  std::string MacroFields::*Typed;
  std::string_view Placeholder;
};

// "True", or "False" and anything else.
struct FlagValue {
  bool MacroSetup::*Read;
  bool MacroFields::*Ticked;
  std::string MacroSetup::*Text = nullptr;  // where the value is kept, for parameters
};

struct MacroWord {
  std::string_view Word;
  bool MacroSetup::*Read;
  bool MacroFields::*Ticked;
  bool Suffices = true;  // without any other
};

// Any of some words.
struct WordsValue {
  std::span<const MacroWord> Words;
  bool Adds = false;                        // to the words of earlier statements
  std::string MacroSetup::*Text = nullptr;  // where the value is kept, for parameters
};

// One of some words.
struct ChoiceValue {
  std::span<const std::string_view> Words;
  bool (*Read)(MacroSetup& setup, std::string_view value);  // false for a value that is none, which changes nothing
  std::string MacroFields::*Chosen;         // null for a statement of older macros, which is not written
  std::string MacroSetup::*Text = nullptr;  // where the value is kept, for parameters
  std::string_view Otherwise = {};          // what it may be besides the words, as a user is told
};

// How derivatives are taken, by its number among the words; the preferences say it where no word does.
struct DerivativesValue {
  std::span<const std::string_view> Words;
  DerivativeKind MacroSetup::*Read;
  DerivativeKind Settings::*Preference;
  std::string MacroFields::*Chosen;
};

using MacroValue = std::variant<LinesValue, TextValue, LimitValue<double>, LimitValue<int>, NumberValue<double>,
                                NumberValue<int>, VariablesValue, FlagValue, WordsValue, ChoiceValue, DerivativesValue>;

// The word of the statement Derivatives.
std::string DerivativeWord(DerivativeKind kind);

struct MacroStatement {
  std::string_view Keyword;
  MacroValue Value;
  bool MacroFields::*Only = nullptr;            // not written unless this is ticked
  std::string MacroFields::*Instead = nullptr;  // not required where this is typed
  bool OfTexts = false;                         // written only where the answers are texts, not a project
  bool UnlessDefault = false;                   // written only where it says something else than the default

  // What the editor finds, in the order of the numbers: no value, or one out of range.
  int FoundAt = 0;
  bool MissingIsError = false;
  std::string_view Missing = {};
  std::string_view Invalid = {};
  double Least = 0, Most = std::numeric_limits<double>::infinity();
};

// In the order in which they are written.
std::span<const MacroStatement> MacroStatements();

// The statement of that keyword, in any case; null where there is none.
const MacroStatement* FindStatement(std::string_view keyword);

// The field that its value is typed into; null for a value that is not typed.
std::string MacroFields::*TypedField(const MacroStatement& statement);

// Sets what a flag or a list of words says.
void ReadFlag(const FlagValue& flag, std::string_view value, MacroSetup& setup);
void ReadWords(const WordsValue& words, std::string_view value, MacroSetup& setup);

// The number that a value within the statement's range is; nothing for any other.
std::optional<double> NumberWithin(const MacroStatement& statement, std::string_view value, const LocaleText& locale);

// Where a setup keeps the value of the statement as text, for parameters to be put into it; null where it doesn't.
std::string MacroSetup::*KeptText(const MacroStatement& statement);

// Reads such a text anew after parameters were put into it, where it decides what stands beside it.
void ReadKeptText(const MacroStatement& statement, MacroSetup& setup);

}  // namespace quorvex
