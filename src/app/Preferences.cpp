#include "app/Preferences.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <initializer_list>

#include "app/SettingsStore.h"
#include "core/FontSettings.h"
#include "core/NumberText.h"
#include "core/SerialDate.h"

namespace quorvex {
namespace {

bool IsTyped(PreferenceKind kind) { return kind == PreferenceKind::Integer || kind == PreferenceKind::Real; }

std::string Localized(std::string text, const LocaleText& locale) {
  std::replace(text.begin(), text.end(), '.', locale.DecimalSeparator);
  return text;
}

std::string Typed(double value, const LocaleText& locale) { return Localized(GeneralNumber(value), locale); }

// What goes into the store for an entry that is well formed.
std::string StoredText(const Preference& row, const std::string& entry, const LocaleText& locale) {
  if (!IsTyped(row.Kind)) return std::string(Trim(entry));
  return ShortestNumber(*NumericText(entry, locale.DecimalSeparator));
}

std::string ShownText(const Preference& row, const std::string& stored, const LocaleText& locale) {
  for (const PreferenceChoice& choice : row.Choices)
    if (choice.Stored == stored) return std::string(choice.Label);
  const auto value = NumericText(stored);
  return IsTyped(row.Kind) && value ? Typed(*value, locale) : stored;
}

// The text that is in force once `stored` is.
std::string InForce(const Preference& row, const std::string& stored) {
  Settings probe;
  probe.Set(row.Key, stored, row.Section);
  return probe.Text(row.Key, row.Section);
}

std::string WhyMalformed(const Preference& row, const std::string& entry, const LocaleText& locale) {
  const std::string name = '\'' + NameOf(row) + '\'';
  if (row.Kind == PreferenceKind::Pattern)
    return IsNumberPattern(entry) ? ""
                                  : "Please enter a valid format string for " + name + ", such as 0.00 or General.";
  if (row.Kind == PreferenceKind::File) {
    std::error_code error;
    if (Trim(entry).empty() || std::filesystem::is_regular_file(Trim(entry), error)) return "";
    return "The file '" + entry + "' of " + name + " does not exist.";
  }
  if (!IsTyped(row.Kind)) return "";
  const auto value = NumericText(entry, locale.DecimalSeparator);
  if (!value) return "Please enter a valid number for " + name + '.';
  return row.Kind == PreferenceKind::Integer && *value != std::floor(*value)
             ? "Please enter a whole number for " + name + '.'
             : "";
}

// Stores what each section holds of the rows.
int SaveRows(std::span<const PreferencePage> pages, const Settings& settings) {
  std::map<std::string_view, std::vector<std::string_view>> sections;
  for (const PreferencePage& page : pages)
    for (const Preference& row : page.Rows) sections[row.Section].push_back(row.Key);
  int error = 0;
  for (const auto& [section, keys] : sections)
    if (const int failure = SaveSettings(settings, section, keys); error == 0) error = failure;
  return error;
}

std::string Suffix(const FontPreference& font) { return font.ThreeD ? "3d" : ""; }

std::string StoredPart(const std::string& text) { return text; }
std::string StoredPart(bool value) { return value ? "true" : "false"; }
std::string StoredPart(double value) { return ShortestNumber(value); }
std::string StoredPart(std::int32_t value) { return std::to_string(value); }

}  // namespace

std::string NameOf(const Preference& row) {
  std::string name(row.Label);
  std::erase(name, '&');
  if (name.ends_with(':')) name.pop_back();
  return name;
}

PreferenceEntries EntriesOf(std::span<const PreferencePage> pages, const Settings& settings, const LocaleText& locale) {
  PreferenceEntries entries;
  for (const PreferencePage& page : pages)
    for (const Preference& row : page.Rows) {
      std::string& entry = entries[std::string(row.Key)];
      switch (row.Kind) {
        case PreferenceKind::Integer:
        case PreferenceKind::Real:
          entry = Typed(settings.Number(row.Key, row.Section), locale);
          break;
        case PreferenceKind::OneOrZero:
          entry = settings.Integer(row.Key, row.Section) != 0 ? "1" : "0";
          break;
        case PreferenceKind::TrueOrFalse:
          entry = settings.Flag(row.Key, row.Section) ? "true" : "false";
          break;
        case PreferenceKind::Choice: {
          const auto isStored = [&](const PreferenceChoice& choice) {
            return choice.Stored == settings.Text(row.Key, row.Section);
          };
          // What is none of the choices shows as the program's own.
          entry = std::any_of(row.Choices.begin(), row.Choices.end(), isStored) ? settings.Text(row.Key, row.Section)
                                                                                : Settings().Text(row.Key, row.Section);
          break;
        }
        case PreferenceKind::Color:
          entry = std::to_string(settings.Has(row.Key, row.Section) ? settings.Integer(row.Key, row.Section)
                                                                    : static_cast<std::int32_t>(row.Least));
          break;
        case PreferenceKind::Pattern:
        case PreferenceKind::File:
          entry = settings.Text(row.Key, row.Section);
          break;
      }
    }
  return entries;
}

std::string WhyRefused(const Preference& row, const std::string& entry, const LocaleText& locale) {
  if (const std::string why = WhyMalformed(row, entry, locale); !why.empty()) return why;
  const std::string stored = StoredText(row, entry, locale);
  // Some texts mean "never chosen" in the store, and so cannot be chosen themselves.
  if (const std::string inForce = InForce(row, stored); inForce != stored)
    return '\'' + NameOf(row) + "' cannot be " + ShownText(row, stored, locale) + ", since " + stored +
           " stands for the program's own choice, " + ShownText(row, inForce, locale) + '.';
  if (!IsTyped(row.Kind)) return "";
  const double value = *NumericText(entry, locale.DecimalSeparator);
  if (value >= row.Least && value <= row.Most) return "";
  return '\'' + NameOf(row) + "' must be in the range (" + Typed(row.Least, locale) + " - " + Typed(row.Most, locale) +
         ").";
}

const Preference* RefuseFirst(std::span<const PreferencePage> pages, const PreferenceEntries& entries,
                              const LocaleText& locale, Prompter& user) {
  for (const PreferencePage& page : pages)
    for (const Preference& row : page.Rows)
      if (const std::string why = WhyRefused(row, entries.find(row.Key)->second, locale); !why.empty()) {
        user.Refuse(why);
        return &row;
      }
  return nullptr;
}

int StorePreferences(std::span<const PreferencePage> pages, const PreferenceEntries& entries, Settings& settings,
                     const LocaleText& locale) {
  for (const PreferencePage& page : pages)
    for (const Preference& row : page.Rows)
      settings.Set(row.Key, StoredText(row, entries.find(row.Key)->second, locale), row.Section);
  return SaveRows(pages, settings);
}

void TellWhetherStored(int error, Prompter& user) {
  if (error != 0)
    user.Refuse("The preferences could not be stored in '" + SettingsFileName() + "' (error " + std::to_string(error) +
                "). They hold until Quorvex ends.");
}

constexpr double kSampleDay = 36526.4375;  // 1 January 2000, half past ten

std::string PatternSample(const std::string& pattern, const LocaleText& locale) {
  if (IsDatePattern(pattern)) return FormatDate(kSampleDay, pattern, locale.DecimalSeparator);
  return Localized(FormatNumber(1234.5678, pattern), locale) + "   " + Localized(FormatNumber(0.05, pattern), locale);
}

FontChoice ReadFontChoice(const FontPreference& font, const Settings& settings) {
  FontChoice choice;
  choice.OfPlot = !ReadFontParts(settings, std::string(font.Prefix), Suffix(font), choice, choice.Color);
  choice.Size = choice.Size > 0 ? std::clamp(choice.Size, kLeastFontSize, kMostFontSize) : FontChoice().Size;
  return choice;
}

int StoreFontChoices(std::span<const FontChoice> choices, Settings& settings) {
  const std::span<const FontPreference> fonts = FontPreferences();
  std::vector<std::string> keys;
  for (std::size_t i = 0; i < fonts.size(); ++i) {
    const auto store = [&](const char* part, const auto& field) {
      keys.push_back(std::string(fonts[i].Prefix) + part + Suffix(fonts[i]));
      settings.Set(keys.back(), choices[i].OfPlot ? "0" : StoredPart(field));
    };
    ListFontParts(store, choices[i], choices[i].Color);
  }
  return SaveSettings(settings, "startup", std::vector<std::string_view>(keys.begin(), keys.end()));
}

}  // namespace quorvex
