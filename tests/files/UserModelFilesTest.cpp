#include <gtest/gtest.h>

#include "Projects.h"
#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "files/ProjectFile.h"
#include "files/UserModelFiles.h"
#include "usermodels/UserModels.h"

namespace quorvex {
namespace {

using Said = std::vector<std::string>;

constexpr const char* kReplaces =
    "ask: Loading user models from a file will replace those currently in this project. Are you sure you want to "
    "continue?";

UserModelDefinition Definition(const std::string& id, const std::string& line, std::size_t coefficients = 1) {
  return {id, {line}, "", std::vector(coefficients, UserModelDefinition::Coefficient{"Value", "1", "Numerical"})};
}

// A project, a user who agrees, and a file of models to read.
class UserModelFiles : public testing::Test {
 protected:
  // The models as a project of another kind may have written them, compilable or not.
  std::string Written(const std::vector<UserModelDefinition>& models, const std::string& variables = "1") {
    std::string text = "\"B_HEADER\"\r\n\"Quorvex:  Version 9.0\"\r\n\"Independentvariables = " + variables +
                       "\"\r\n\"E_HEADER\"\r\n\"Begin_equations\"\r\n";
    for (const UserModelDefinition& model : models) {
      for (std::size_t n = 0; n < 10; ++n)
        text += "\"" + (n < model.FunctionList.size() ? model.FunctionList[n] : "") + "\"\r\n";
      text += "\"" + model.id + "\"\r\n\"Begin_description\"\r\n\"End_description\"\r\n" +
              std::to_string(model.Coefficients.size()) + "\r\n";
      for (std::size_t i = 0; i < model.Coefficients.size(); ++i) text += "\"Value\",\"1\"\r\n";
      for (std::size_t i = 0; i < model.Coefficients.size(); ++i) text += "\"Numerical\"\r\n";
    }
    return folder.Write("m.equ", text + "\"End_equations\"\r\n");
  }

  bool Load() {
    return LoadUserModels(project, user, [this] { return file; });
  }
  bool Import() {
    return ImportUserModels(
        project, user, [this] { return file; },
        [this](const ModelClass& existing, const ModelClass& imported) {
          clashes.push_back(existing.FunctionList(0) + "|" + imported.FunctionList(0));
          return keepImported;
        });
  }
  Said Ids() const {
    Said ids;
    for (const ModelClass* model : UserModels(project)) ids.push_back(model->id + ": " + model->FunctionList(0));
    return ids;
  }
  std::string Quoted() const { return "'" + *file + "'"; }

  TemporaryFolder folder;
  Project project = NewProject(1, false, {});
  RecordingPrompter user;
  std::optional<std::string> file;
  bool keepImported = false;
  Said clashes;
};

TEST_F(UserModelFiles, LoadReplacesWhatTheProjectHas) {
  AddUserModel(project, Definition("Old", "a*x"));
  user.Answer = false;
  EXPECT_FALSE(Load());
  user.Answer = true;
  EXPECT_FALSE(Load());  // no file was chosen
  EXPECT_EQ(user.Said, Said(2, kReplaces));
  EXPECT_EQ(Ids(), Said{"Old: a*x"});

  const struct {
    std::vector<UserModelDefinition> Models;
    std::string Told;  // "@" is the file
    Said Left;
  } cases[] = {
      {{Definition("P", "a*x^2")}, "1 user defined model has been read from @.", {"P: a*x^2"}},
      // Under the ID of a built-in model, and again under one of the file: the first one stays.
      {{Definition("A*X+B", "a*x^3"), Definition("Q", "a*x"), Definition("q", "b*x"), Definition("R", "a/x")},
       "2 user defined models have been read from @.",
       {"Q: a*x", "R: a/x"}},
      {{Definition("S", "a*("), Definition("T", "a*x")},
       "1 user defined model has been read from @. An error occurred while parsing the models.",
       {"T: a*x"}},
      {{}, "No user defined models added from @. ", {}},
  };
  for (auto c : cases) {
    file = Written(c.Models);
    EXPECT_TRUE(Load());
    EXPECT_EQ(user.Last(), "inform: " + c.Told.replace(c.Told.find('@'), 1, Quoted()));
    EXPECT_EQ(Ids(), c.Left);
    for (const ModelClass* model : UserModels(project)) EXPECT_EQ(model->Group, "User Defined");
    EXPECT_TRUE(project.Changed);
  }
}

TEST_F(UserModelFiles, LeavesTheProjectAloneWhereTheFileIsNotForIt) {
  AddUserModel(project, Definition("Old", "a*x"));
  const auto refused = [&](const std::string& message) {
    for (const bool load : {true, false}) {
      EXPECT_FALSE(load ? Load() : Import());
      std::string said = message;
      if (const std::size_t verb = said.find("VERB"); verb != std::string::npos)
        said.replace(verb, 4, load ? "load" : "import");
      EXPECT_EQ(user.Last(), "refuse: " + said);
      EXPECT_EQ(Ids(), Said{"Old: a*x"});
      EXPECT_FALSE(project.Changed);
    }
  };
  file = folder.Path("none.equ");
  refused("Error reading user defined model file " + Quoted() + ".");
  file = folder.Write("other.equ", "1,2\r\n");
  refused("Error reading user defined model file " + Quoted() + ".");
  file = Written({Definition("P", "a*x1*x2")}, "2");
  refused("The models you are attempting to VERB have 2 independent variables, and the current project has 1");
  project = NewProject(3, false, {});
  file = Written({Definition("P", "a*x")});
  EXPECT_FALSE(Import());
  EXPECT_EQ(
      user.Last(),
      "refuse: The models you are attempting to import have 1 independent variable, and the current project has 3");
}

TEST_F(UserModelFiles, KeepsWhatCouldBeReadOfABrokenFile) {
  const std::string whole = Written({Definition("P", "a*x"), Definition("Q", "b*x")});
  const std::string text = folder.Read("m.equ");
  file = folder.Write("cut.equ", text.substr(0, text.find("\"Q\"") + 5));
  EXPECT_TRUE(Load());
  EXPECT_EQ(user.Said, (Said{kReplaces, "refuse: Error reading user defined model file " + Quoted() + ".",
                             "inform: 1 user defined model has been read from " + Quoted() + "."}));
  EXPECT_EQ(Ids(), Said{"P: a*x"});
}

TEST_F(UserModelFiles, ImportAddsAndAsksWhereDefinitionsClash) {
  AddUserModel(project, Definition("Same", "a*x"));
  AddUserModel(project, Definition("Clash", "a*x"));
  file = Written({Definition("New", "k*x"), Definition("SAME", "a*x"), Definition("clash", "a*x^2"),
                  Definition("a*x+b", "a*x^9"), Definition("Bad", "a*"), Definition("new", "k*x^2")});
  EXPECT_TRUE(Import());
  EXPECT_EQ(Ids(), (Said{"Same: a*x", "Clash: a*x", "New: k*x"}));
  EXPECT_EQ(clashes, (Said{"a*x|a*x^2", "k*x|k*x^2"}));
  EXPECT_EQ(user.Said, Said{"inform: 1 user defined model has been imported from " + Quoted() +
                            ". An error occurred while parsing the models."});
  keepImported = true;
  EXPECT_TRUE(Import());
  EXPECT_EQ(Ids(), (Said{"Same: a*x", "clash: a*x^2", "new: k*x^2"}));
  EXPECT_TRUE(user.Last().starts_with("inform: 2 user defined models have been imported from '"));

  project.Changed = false;
  file = Written({Definition("Same", "a*x")});
  EXPECT_FALSE(Import());
  EXPECT_EQ(user.Last(), "inform: No user defined models imported from " + Quoted() + ". ");
  EXPECT_FALSE(project.Changed);
  file.reset();
  EXPECT_FALSE(Import());
}

TEST_F(UserModelFiles, TakesNoModelBeyondTheLimit) {
  std::string line = "x";
  for (int i = 1; i <= 101; ++i) line += "+p" + std::to_string(i);
  file = Written({Definition("Large", line, 101), Definition("Most", line.substr(0, line.rfind('+')), 100)});
  EXPECT_TRUE(Import());
  ASSERT_EQ(Ids().size(), 1u);
  EXPECT_TRUE(Ids()[0].starts_with("Most"));
}

TEST_F(UserModelFiles, SaveWritesWhatImportReads) {
  EXPECT_FALSE(SaveUserModels(project, user));
  EXPECT_EQ(user.Said, Said{"refuse: This project has no user defined models."});
  AddUserModel(project, {"P", {"a*f1", "x"}, "about", {{"* YMax", "2", "x"}}});
  EXPECT_FALSE(SaveUserModels(project, user));
  EXPECT_EQ(user.Last(), "save: Save User Models|Equation Files (*.equ)|equ");
  user.File = folder.Path("none/m.equ");
  EXPECT_FALSE(SaveUserModels(project, user));
  EXPECT_TRUE(user.Last().starts_with("refuse: Error writing to '" + *user.File + "'. "));
  file = user.File = folder.Path("saved.equ");
  EXPECT_TRUE(SaveUserModels(project, user));
  const UserModelDefinition before = DefinitionOf(*project.Models.Find("P"));
  project = NewProject(1, false, {});
  EXPECT_TRUE(Import());
  EXPECT_EQ(DefinitionOf(*project.Models.Find("P")), before);
}

TEST_F(UserModelFiles, JoinACatalogueWithoutAWord) {
  const std::size_t builtIn = project.Models.size();
  UserModelDefinition gap = Definition("Good", "a*x");
  gap.FunctionList = {"a*x", "2", "", "3"};  // as far as the first empty line
  const std::string name = Written({Definition("A*X+B", "a*x^3"), Definition("Bad", "a*"), gap});
  AddUserModels(project.Models, folder.Path("none.equ"), 1, {});
  AddUserModels(project.Models, name, 2, {});
  EXPECT_EQ(project.Models.size(), builtIn);
  AddUserModels(project.Models, name, 1, {});
  ASSERT_EQ(project.Models.size(), builtIn + 1);
  const ModelClass& model = *project.Models.Find("Good");
  EXPECT_EQ(model.Group, "User Defined Equations");
  EXPECT_EQ(model.SolveType, 0);
  EXPECT_TRUE(model.UserType);
  EXPECT_EQ(model.FunctionCount(), 2);
}

}  // namespace
}  // namespace quorvex
