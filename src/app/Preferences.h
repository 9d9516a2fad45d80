#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/LocaleText.h"
#include "core/Prompter.h"
#include "core/Settings.h"

namespace quorvex {

// What the preference dialogs offer, as tables of rows: a dialog shows one control for each.

enum class PreferenceKind {
  Integer,      // typed, Least to Most
  Real,         // typed in the locale's form, Least to Most
  OneOrZero,    // ticked or not, stored as "1" or "0"
  TrueOrFalse,  // ticked or not, stored as "true" or "false"
  Choice,       // one of Choices
  Color,        // a number with red in its low byte, then green, then blue; Least where none was ever chosen
  Pattern,      // of number labels, such as "0.00"
  File,         // a name of a file, or nothing
};

struct PreferenceChoice {
  std::string_view Stored, Label;
};

struct Preference {
  std::string_view Key;
  std::string_view Label;  // "&" before the letter that goes to it
  PreferenceKind Kind;
  double Least = 0, Most = 0;
  std::span<const PreferenceChoice> Choices = {};
  std::string_view Section = "startup";
};

struct PreferencePage {
  std::string_view Title;
  std::span<const Preference> Rows;
};

std::span<const PreferencePage> SolverPreferences();   // of the form FilePref
std::span<const PreferencePage> GeneralPreferences();  // of the form frmGenPref, but for its fonts

// What stands in the control of each key: numbers as typed, otherwise the text that is stored.
using PreferenceEntries = std::map<std::string, std::string, std::less<>>;

PreferenceEntries EntriesOf(std::span<const PreferencePage> pages, const Settings& settings, const LocaleText& locale);

// The label without its marks, as messages name the row.
std::string NameOf(const Preference& row);

// Why the entry cannot be stored, in one sentence; empty where it can. A text that stands for "never chosen" cannot be
// stored as a choice of its own.
std::string WhyRefused(const Preference& row, const std::string& entry, const LocaleText& locale);

// The first row whose entry cannot be stored, after telling the user why; null where all can.
const Preference* RefuseFirst(std::span<const PreferencePage> pages, const PreferenceEntries& entries,
                              const LocaleText& locale, Prompter& user);

// Puts entries that passed into the settings and stores these. They hold for this run even where the store cannot be
// written. Returns 0 or the file error's number.
int StorePreferences(std::span<const PreferencePage> pages, const PreferenceEntries& entries, Settings& settings,
                     const LocaleText& locale);

// Tells the user of an error of the store.
void TellWhetherStored(int error, Prompter& user);

// A number label by the pattern, to show what it does: a large number and a small one.
std::string PatternSample(const std::string& pattern, const LocaleText& locale);

// A font of new plots.
struct FontPreference {
  std::string_view Prefix;  // of its keys
  bool ThreeD;              // its keys end in "3d"
  std::string_view Label;
};
std::span<const FontPreference> FontPreferences();

struct FontChoice {
  bool OfPlot = true;  // the plot's own font, whatever the rest says
  std::string Name = "Arial";
  double Size = 10;  // points, kLeastFontSize to kMostFontSize
  bool Bold = false, Italic = false;
  std::int32_t Color = 0;

  bool operator==(const FontChoice&) const = default;
};
inline constexpr double kLeastFontSize = 2, kMostFontSize = 72;

FontChoice ReadFontChoice(const FontPreference& font, const Settings& settings);

// Stores a choice for each of FontPreferences(), as StorePreferences does.
int StoreFontChoices(std::span<const FontChoice> choices, Settings& settings);

}  // namespace quorvex
