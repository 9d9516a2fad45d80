// The rows of the macro's statements against the manual and against the records that they lead to.

#include <gtest/gtest.h>

#include <regex>

#include "Paths.h"
#include "core/Files.h"
#include "core/NumberText.h"
#include "macro/MacroReader.h"
#include "macro/MacroStatements.h"

namespace quorvex {
namespace {

std::string ManualPage(const std::string& name) {
  WholeFile file;
  EXPECT_EQ(file.Read(TestData("../../docs/" + name)), 0) << name;
  return std::string(file.Text());
}

struct ManualRow {
  std::string Keyword, Value, Default, Example;
};

// The rows of the tables of statements: "| `Keyword` | value | default | example |".
std::vector<ManualRow> ManualRows() {
  const std::string manual = ManualPage("macros.md");
  const auto from = manual.find("\n## Statements"), to = manual.find("\n## Models");
  const std::string part = manual.substr(from, to - from);
  const std::regex line("\\| `(\\w+)` \\|(.*)\\|(.*)\\|(.*)\\|\n");
  std::vector<ManualRow> rows;
  for (std::sregex_iterator found(part.begin(), part.end(), line), end; found != end; ++found)
    rows.push_back({(*found)[1], (*found)[2], (*found)[3], (*found)[4]});
  return rows;
}

// What the manual has to say of the words and the default of each kind; the default is that of MacroSetup.
struct Told {
  std::vector<std::string> Words;  // each in the value or the default
  std::string Default;             // in the default
};

Told ToldOf(const LinesValue&) { return {{}, "none"}; }
Told ToldOf(const TextValue& text) {
  const std::string initial = MacroSetup().*text.Read;
  return {{}, initial.empty() ? "none" : initial};
}
template <typename Number>
Told ToldOf(const LimitValue<Number>& limit) {
  EXPECT_EQ(MacroSetup().*limit.Read, Settings().*limit.Preference);
  return {{}, GeneralNumber(Settings().*limit.Preference)};
}
template <typename Number>
Told ToldOf(const NumberValue<Number>& number) {
  EXPECT_EQ(MacroSetup().*number.Read, 0);
  return {{std::string(number.Wanted)}, "none"};
}
Told ToldOf(const VariablesValue& variables) { return {{}, std::to_string(MacroSetup().*variables.Read)}; }
Told ToldOf(const FlagValue& flag) {
  EXPECT_EQ(MacroSetup().*flag.Read, MacroFields().*flag.Ticked);
  return {{"`True`"}, MacroSetup().*flag.Read ? "`True`" : "`False`"};
}
Told ToldOf(const WordsValue& words) {
  Told told;
  std::size_t on = 0;
  for (const MacroWord& word : words.Words) {
    told.Words.push_back('`' + std::string(word.Word) + '`');
    on += MacroSetup().*word.Read ? 1 : 0;
    EXPECT_EQ(MacroSetup().*word.Read, MacroFields().*word.Ticked) << word.Word;
  }
  EXPECT_TRUE(on == 0 || on == words.Words.size());
  told.Default = on == 0 ? "none" : "all";
  return told;
}
Told ToldOf(const ChoiceValue& choice) {
  Told told;
  for (const std::string_view word : choice.Words) told.Words.emplace_back('`' + std::string(word) + '`');
  if (choice.Chosen != nullptr) told.Default = '`' + MacroFields().*choice.Chosen + '`';
  return told;
}
Told ToldOf(const DerivativesValue& derivatives) {
  Told told;
  for (const std::string_view word : derivatives.Words) told.Words.emplace_back('`' + std::string(word) + '`');
  told.Default = derivatives.Words[static_cast<std::size_t>(MacroSetup().*derivatives.Read)];
  return told;
}

TEST(MacroStatements, AreToldInTheManualWithTheirWordsRangesAndDefaults) {
  std::vector<ManualRow> rows = ManualRows();
  for (const MacroStatement& statement : MacroStatements()) {
    SCOPED_TRACE(statement.Keyword);
    const auto row = std::ranges::find(rows, std::string(statement.Keyword), &ManualRow::Keyword);
    ASSERT_NE(row, rows.end());
    const Told told = std::visit([](const auto& value) { return ToldOf(value); }, statement.Value);
    for (const std::string& word : told.Words)
      EXPECT_NE((row->Value + row->Default).find(word), std::string::npos) << word << "\n" << row->Value;
    EXPECT_NE(row->Default.find(told.Default), std::string::npos) << told.Default << "\n" << row->Default;
    if (statement.Least > 0 && !statement.UnlessDefault) {
      const std::string least = GeneralNumber(statement.Least);
      const std::string range = statement.Most < 1e9 ? least + " to " + GeneralNumber(statement.Most) : "from " + least;
      EXPECT_NE(row->Value.find(range), std::string::npos) << range << "\n" << row->Value;
    }
    rows.erase(row);
  }
  for (const ManualRow& row : rows) ADD_FAILURE() << row.Keyword << " is no statement";
}

TEST(MacroStatements, AreReadAsTheManualsExamplesHaveThem) {
  for (const ManualRow& row : ManualRows()) {
    const auto begin = row.Example.find('`') + 1;
    if (begin == 0) continue;
    const std::string statement = row.Example.substr(begin, row.Example.find('`', begin) - begin);
    EXPECT_TRUE(statement.starts_with(row.Keyword + " = ")) << statement;
    Macro macro;
    Settings preferences;
    std::string log;
    EXPECT_TRUE(ReadMacro("B_MACRO\n" + statement + "\nE_MACRO\n", LocaleText(), preferences, macro, log));
    EXPECT_EQ(log, "") << statement;
  }
}

TEST(MacroStatements, AreSpelledSoInThePageOfTheEditor) {
  const std::string page = ManualPage("manual/macros.html");
  const std::regex keyword("<code>([A-Z][a-z]+[A-Z]\\w+)</code>");
  int count = 0;
  for (std::sregex_iterator found(page.begin(), page.end(), keyword), end; found != end; ++found, ++count)
    EXPECT_NE(FindStatement((*found)[1].str()), nullptr) << (*found)[1];
  EXPECT_GT(count, 0);
}

}  // namespace
}  // namespace quorvex
