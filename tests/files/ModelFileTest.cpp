#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <random>

#include "Golden.h"
#include "Projects.h"
#include "TemporaryFolder.h"
#include "files/GroupFile.h"
#include "files/ModelFile.h"

namespace quorvex {
namespace {

constexpr const char* kUnreadable = "Error reading user defined model file 'm.equ'.";

const std::vector<UserModelDefinition>& Definitions() {
  static const std::vector<UserModelDefinition> definitions = {
      {"Decay",
       {"a*exp(-b*x)+f1", "0.5*x"},
       "Decay,\r\nwith drift",
       {{"*ymax", "1.5", "exp(-b*x)"}, {"Value", "1", "Numerical"}}},
      {"Bare", {"k*x^max(2,1)"}, "", {{"Value", "1", "x^max(2,1)"}}},
  };
  return definitions;
}

ModelCollection Models(const LocaleText& locale) {
  Project project = NewProject(1, false, locale);
  for (const UserModelDefinition& definition : Definitions()) AddUserModel(project, definition);
  return std::move(project.Models);
}

std::string Written(const LocaleText& locale) {
  const TemporaryFolder folder;
  EXPECT_EQ(WriteUserModels(folder.Path("m.equ"), 1, Models(locale), locale), 0);
  return folder.Read("m.equ");
}

TEST(ModelFile, HoldsTheUserDefinedModelsOfAnyLocale) {
  const std::string text = Written(LocaleText());
  ExpectGolden("Models.equ", text);
  EXPECT_EQ(Written(kCommaLocale), text);
  const UserModelFile content = ParseUserModels(text, "m.equ", LocaleText());
  EXPECT_EQ(content.Version, "Quorvex:  Version 9.0");
  EXPECT_EQ(content.IndependentVariables, 1);
  EXPECT_EQ(content.Message, "");
  EXPECT_EQ(content.Models.size(), 2u);
  // What the definitions leave out comes back the same; derivatives and rules are texts of the model.
  for (std::size_t i = 0; i < content.Models.size(); ++i) EXPECT_EQ(content.Models[i], Definitions()[i]);
  EXPECT_EQ(ParseUserModels(text, "m.equ", kCommaLocale).Models[0].FunctionList,
            (std::vector<std::string>{"a*exp(-b*x)+f1", "0,5*x"}));
  EXPECT_EQ(ParseUserModels(text, "m.equ", kCommaLocale).Models[1].Coefficients[0].Derivative, "x^max(2;1)");
}

TEST(ModelFile, ReadsOlderVersions) {
  const std::string text = Written(LocaleText());
  const auto asVersion = [&](const std::string& version, bool derivatives) {
    std::string old = text;
    old.replace(old.find("9.0"), 3, version);
    if (!derivatives)
      for (const char* field : {"\"exp(-b*x)\"\r\n", "\"Numerical\"\r\n", "\"x^max(2,1)\"\r\n"})
        old.erase(old.rfind(field), std::string(field).size());
    return old;
  };
  for (const char* version : {"4.0", "4.1", "5.0", "6.1", "8.2"}) {
    const UserModelFile content = ParseUserModels(asVersion(version, true), "m.equ", {});
    EXPECT_EQ(content.Message, "");
    EXPECT_EQ(content.Models, Definitions());
  }
  for (const char* version : {"3.0", "3.1"}) {
    const UserModelFile content = ParseUserModels(asVersion(version, false), "m.equ", {});
    EXPECT_EQ(content.Message, "");
    ASSERT_EQ(content.Models.size(), 2u);
    for (const UserModelDefinition& definition : content.Models)
      for (const auto& coefficient : definition.Coefficients) EXPECT_EQ(coefficient.Derivative, "Numerical");
  }
  EXPECT_EQ(ParseUserModels(asVersion("10.0", true), "m.equ", {}).Message, kUnreadable);
}

TEST(ModelFile, KeepsTheModelsInFrontOfABreak) {
  const std::string text = Written(LocaleText());
  const std::size_t first = text.find("\"k*x^max(2,1)\""), end = text.find("\"End_equations\"");
  for (std::size_t at = text.find("\r\n"); at < text.size(); at = text.find("\r\n", at + 2)) {
    const std::size_t cut = at + 2;
    const UserModelFile content = ParseUserModels(text.substr(0, cut), "m.equ", {});
    EXPECT_EQ(content.Models.size(), cut < first ? 0u : cut < end ? 1u : 2u) << cut;
    if (cut == first) continue;
    const bool between = cut == text.find("\"a*exp") || cut >= end;
    EXPECT_EQ(content.Message, between ? "" : kUnreadable) << cut;
  }
  EXPECT_EQ(ReadUserModels("none.equ", {}).Message, "Error reading user defined model file 'none.equ'.");
  for (const char* bad : {"", "1,2", "\"B_HEADER\"\n\"Quorvex:  Version 9.0\"\n\"Independentvariables = one\"\n"})
    EXPECT_EQ(ParseUserModels(bad, "m.equ", {}).Message, kUnreadable);
}

TEST(ModelFile, SurvivesFlippedBytes) {
  const std::string text = Written(LocaleText());
  std::mt19937 random(7);
  for (int round = 0; round < 2000; ++round) {
    std::string flipped = text;
    for (int flips = 0; flips < 3; ++flips) flipped[random() % text.size()] ^= static_cast<char>(1 << random() % 8);
    const UserModelFile content = ParseUserModels(flipped, "m.equ", {});
    EXPECT_LE(content.Models.size(), 2u);
    for (const UserModelDefinition& definition : content.Models) MakeUserModel(definition, 1, {});
  }
}

TEST(MakeUserModel, RefusesWhatIsNoModelOfThoseVariables) {
  const struct {
    std::vector<std::string> lines;
    std::size_t variables, coefficients;
    bool made;
  } kCases[] = {{{"a*x"}, 1, 1, true},   {{"a*x"}, 1, 2, false},  {{"a*"}, 1, 1, false},
                {{"a+b"}, 1, 2, false},  {{"a*x1"}, 2, 1, true},  {{"a*x2"}, 2, 1, true},
                {{"a*x3"}, 2, 1, false}, {{"a*f1"}, 1, 1, false}, {{"a*f1", "x"}, 1, 1, true}};
  for (const auto& c : kCases) {
    const UserModelDefinition definition{
        "m", c.lines, "", std::vector(c.coefficients, UserModelDefinition::Coefficient{"Value", "1", "Numerical"})};
    EXPECT_EQ(MakeUserModel(definition, c.variables, {}) != nullptr, c.made) << c.lines[0];
  }
}

TEST(GroupFile, KeepsTheIdsInOrder) {
  const TemporaryFolder folder;
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.Path(""));
  const std::vector<std::string> ids = {"a*x+b", "My model, two", "x \"q\""};
  EXPECT_EQ(ReadGroupFile(1), std::nullopt);
  EXPECT_EQ(WriteGroupFile(ids, 1), 0);
  EXPECT_EQ(WriteGroupFile({}, 12), 0);
  EXPECT_EQ(folder.Read("user1.grp"),
            "Quorvex:  Version 9.0\r\nB_Equations\r\na*x+b\r\nMy model, two\r\nx \"q\"\r\nE_Equations\r\n");
  EXPECT_EQ(folder.Read("user12.grp"), "Quorvex:  Version 9.0\r\nB_Equations\r\nE_Equations\r\n");
  EXPECT_EQ(ReadGroupFile(1), ids);
  EXPECT_EQ(ReadGroupFile(12), std::vector<std::string>());
  for (const char* bad : {"", "1,2\n", "Quorvex:  Version 9.0\n", "Quorvex:  Version 9.0\nB_Equations\na*x+b\n"}) {
    folder.Write("user2.grp", bad);
    EXPECT_EQ(ReadGroupFile(2), std::nullopt) << bad;
  }
  std::filesystem::current_path(before);
}

}  // namespace
}  // namespace quorvex
