#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "app/Preferences.h"
#include "app/SettingsStore.h"
#include "app/Tips.h"
#include "core/NumberText.h"

namespace quorvex {
namespace {

const LocaleText kPoint;
const LocaleText kComma{.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.', .DateSeparator = '.'};

class Preferences : public testing::Test {
 protected:
  static std::vector<Preference> Rows() {
    std::vector<Preference> rows;
    for (const auto pages : {SolverPreferences(), GeneralPreferences()})
      for (const PreferencePage& page : pages) rows.insert(rows.end(), page.Rows.begin(), page.Rows.end());
    return rows;
  }
  static Preference Row(std::string_view key) {
    for (const Preference& row : Rows())
      if (row.Key == key) return row;
    throw std::out_of_range(std::string(key));
  }

  TemporaryFolder folder_;
  TemporaryVariable name_{"QUORVEX_SETTINGS", folder_.Path("quorvex.ini").c_str()};
  RecordingPrompter user_;
};

TEST_F(Preferences, RefuseWhatCannotBeStoredInOneSentence) {
  const std::string missing = folder_.Path("none.qv2");
  const std::string there = folder_.Write("there.qv2", "");
  const struct {
    const char* Key;
    std::string Entry, Why;
  } cases[] = {
      {"maxiterations", "1", ""},
      {"maxiterations", " 32767 ", ""},
      {"maxiterations", "", "Please enter a valid number for 'Maximum iterations'."},
      {"maxiterations", "many", "Please enter a valid number for 'Maximum iterations'."},
      {"maxiterations", "2.5", "Please enter a whole number for 'Maximum iterations'."},
      {"maxiterations", "32768", "'Maximum iterations' must be in the range (1 - 32767)."},
      {"maxiterations", "-1", "'Maximum iterations' must be in the range (1 - 32767)."},
      {"maxiterations", "0", "'Maximum iterations' cannot be 0, since 0 stands for the program's own choice, 250."},
      {"diviterations", "0.0",
       "'Unchanged iterations allowed' cannot be 0, since 0 stands for the program's own choice, 10."},
      {"tolerance", "0", "'Regression tolerance (%)' cannot be 0, since 0 stands for the program's own choice, 1E-10."},
      {"tolerance", "1e-12", ""},
      {"tolerance", "101", "'Regression tolerance (%)' must be in the range (1E-15 - 100)."},
      {"tickpenlength", "0", "'Tick length (inches)' cannot be 0, since 0 stands for the program's own choice, 0.125."},
      {"tickpenlength", "0.6", "'Tick length (inches)' must be in the range (0.001 - 0.5)."},
      {"mesh3dcolorscheme", "0",
       "'Colour scheme' cannot be Greyscale, since 0 stands for the program's own choice, Spectrum."},
      {"mesh3dcolorscheme", "13", ""},
      {"mesh3dcontourcount", "51", "'Number of contours' must be in the range (2 - 50)."},
      {"undolevels", "0", ""},  // which turns undo off
      {"threads", "0", ""},     // which is the program's own choice
      {"threads", "1025", "'Threads (0 for all processors)' must be in the range (0 - 1024)."},
      {"defaultsolver", "0", ""},
      {"default_numiv", "21", "'Independent variables of a new project' must be in the range (1 - 20)."},
      {"pointsperplot", "2", "'Calculated points of a curve' must be in the range (3 - 5000)."},
      {"mleft", "0", ""},
      {"mleft", "-1", "'Left margin' cannot be -1, since -1 stands for the program's own choice, 0.25."},
      {"xlabelstring", "0.0###", ""},
      {"xlabelstring", "general", ""},
      {"xlabelstring", "two digits",
       "Please enter a valid format string for 'X axis labels', such as 0.00 or General."},
      {"template2d", "", ""},
      {"template2d", there, ""},
      {"template2d", missing, "The file '" + missing + "' of 'Template' does not exist."},
  };
  for (const auto& c : cases) EXPECT_EQ(WhyRefused(Row(c.Key), c.Entry, kPoint), c.Why) << c.Key << ' ' << c.Entry;
  EXPECT_EQ(WhyRefused(Row("tickpenlength"), "0,6", kComma),
            "'Tick length (inches)' must be in the range (0,001 - 0,5).");
  EXPECT_EQ(WhyRefused(Row("tickpenlength"), "0.25", kComma),
            "Please enter a valid number for 'Tick length (inches)'.");
}

TEST_F(Preferences, StoreWhatTheDialogShows) {
  for (const LocaleText& locale : {kPoint, kComma}) {
    for (const auto pages : {SolverPreferences(), GeneralPreferences()}) {
      Settings settings;
      PreferenceEntries entries = EntriesOf(pages, settings, locale);
      ASSERT_EQ(RefuseFirst(pages, entries, locale, user_), nullptr) << user_.Last();
      EXPECT_EQ(StorePreferences(pages, entries, settings, locale), 0);
      EXPECT_EQ(EntriesOf(pages, LoadSettings(), locale), entries);
    }
  }
  // What a user who has set nothing gets stays what it was.
  const Settings stored = LoadSettings();
  for (const Preference& row : Rows())
    EXPECT_TRUE(row.Kind == PreferenceKind::Color ||
                stored.Text(row.Key, row.Section) == Settings().Text(row.Key, row.Section))
        << row.Key;
  EXPECT_EQ(stored.Integer("plotbackgroundcolor"), 0xFFFFFF);  // paper, whatever the key's default text says
}

TEST_F(Preferences, TakeEffectAtOnceAndAreReadBack) {
  Settings settings;
  PreferenceEntries entries = EntriesOf(SolverPreferences(), settings, kComma);
  EXPECT_EQ(entries.find("tolerance")->second, "1E-10");
  entries["tolerance"] = "0,05";
  entries["maxiterations"] = "99";
  entries["derivative"] = "2";
  EXPECT_EQ(entries.find("threads")->second, "0");
  entries["threads"] = "3";
  entries["sortindex"] = "4";
  entries["show90ci"] = "0";
  EXPECT_EQ(StorePreferences(SolverPreferences(), entries, settings, kComma), 0);
  const Settings stored = LoadSettings();
  for (const Settings* each : std::initializer_list<const Settings*>{&settings, &stored}) {
    EXPECT_EQ(each->ResidualTolerance, 0.05);
    EXPECT_EQ(each->MaxIterations, 99);
    EXPECT_EQ(each->DerivativeMethod, DerivativeKind::Exact);
    EXPECT_EQ(each->Threads, 3);
    EXPECT_EQ(each->Integer("sortindex"), 4);
    EXPECT_EQ(each->Integer("show90ci"), 0);
  }
  entries = EntriesOf(GeneralPreferences(), settings, kComma);
  entries["munits"] = "cm";
  entries["mtop"] = "1,5";
  EXPECT_EQ(StorePreferences(GeneralPreferences(), entries, settings, kComma), 0);
  EXPECT_EQ(LoadSettings().Number("mtop", "printsetup"), 1.5);
  EXPECT_EQ(LoadSettings().Text("munits", "printsetup"), "cm");
  EXPECT_EQ(LoadSettings().MaxIterations, 99);
}

TEST_F(Preferences, TellWhereTheStoreCannotBeWritten) {
  const TemporaryVariable folder("QUORVEX_SETTINGS", folder_.Path("").c_str());
  Settings settings;
  PreferenceEntries entries = EntriesOf(SolverPreferences(), settings, kPoint);
  entries["maxiterations"] = "7";
  const int error = StorePreferences(SolverPreferences(), entries, settings, kPoint);
  TellWhetherStored(error, user_);
  EXPECT_EQ(user_.Said, std::vector<std::string>{"refuse: The preferences could not be stored in '" + folder_.Path("") +
                                                 "' (error 75). They hold until Quorvex ends."});
  EXPECT_EQ(settings.MaxIterations, 7);
  TellWhetherStored(0, user_);
  EXPECT_EQ(user_.Said.size(), 1u);
}

TEST_F(Preferences, ShowNonsenseInTheStoreAsTheProgramsOwn) {
  Settings settings;
  settings.Set("derivative", "7");
  settings.Set("sortindex", "best");
  settings.Set("undolevels", "x");
  const PreferenceEntries solver = EntriesOf(SolverPreferences(), settings, kPoint);
  EXPECT_EQ(solver.find("derivative")->second, "0");
  EXPECT_EQ(solver.find("sortindex")->second, "1");
  EXPECT_EQ(EntriesOf(GeneralPreferences(), settings, kPoint).find("undolevels")->second, "15");
}

TEST_F(Preferences, AreKnownToTheSettings) {
  std::set<std::string_view> keys;
  for (const Preference& row : Rows()) {
    EXPECT_TRUE(keys.insert(row.Key).second) << row.Key;
    // A key that is misspelt here has no default there.
    EXPECT_TRUE(row.Kind == PreferenceKind::File || !Settings().Text(row.Key, row.Section).empty()) << row.Key;
  }
  for (const FontPreference& font : FontPreferences())
    for (const char* part : {"fontname", "fontbold", "fontheight", "fontitalic", "color"})
      EXPECT_EQ(Settings().Text(std::string(font.Prefix) + part + (font.ThreeD ? "3d" : "")), "0") << font.Prefix;
  EXPECT_EQ(FontPreferences().size(), 13u);
}

TEST_F(Preferences, KeepFontsOfPlots) {
  Settings settings;
  std::vector<FontChoice> fonts(FontPreferences().size());
  fonts[1] = {false, "Liberation Serif", 12.5, true, false, 0x0000FF};
  fonts.back() = {false, "Arial", 8, false, true, 0xFF8000};
  EXPECT_EQ(StoreFontChoices(fonts, settings), 0);
  const Settings stored = LoadSettings();
  for (std::size_t i = 0; i < fonts.size(); ++i) EXPECT_EQ(ReadFontChoice(FontPreferences()[i], stored), fonts[i]) << i;
  EXPECT_EQ(stored.Text("xaxistitlefontname"), "Liberation Serif");
  EXPECT_EQ(stored.Text("xaxistitlefontheight"), "12.5");
  EXPECT_EQ(stored.Text("zaxisnumberfontitalic3d"), "true");
  EXPECT_EQ(stored.Text("zaxisnumbercolor3d"), "16744448");
  EXPECT_EQ(stored.Text("footnotefontname"), "0");

  settings.Set("footnotefontheight", "1e9");  // alone, and one that nobody can want
  const auto footnote = std::find_if(FontPreferences().begin(), FontPreferences().end(),
                                     [](const FontPreference& font) { return font.Prefix == "footnote"; });
  EXPECT_EQ(ReadFontChoice(*footnote, settings).Size, kMostFontSize);
}

TEST_F(Preferences, SampleTheNumberPattern) {
  EXPECT_EQ(PatternSample("0.00", kPoint), "1234.57   0.05");
  EXPECT_EQ(PatternSample("0.0E+00", kComma), "1,2E+03   5,0E-02");
  EXPECT_EQ(PatternSample("General", kComma), "1234,5678   0,05");
}

TEST(Tips, AreDifferentSentences) {
  const std::set<std::string_view> tips(Tips().begin(), Tips().end());
  EXPECT_GE(tips.size(), 12u);
  EXPECT_EQ(tips.size(), Tips().size());
  for (const std::string_view tip : tips) EXPECT_TRUE(tip.ends_with('.') && tip.size() < 200) << tip;
}

}  // namespace
}  // namespace quorvex
