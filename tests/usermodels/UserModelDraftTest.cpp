#include <gtest/gtest.h>

#include <cmath>

#include "RecordingPrompter.h"
#include "TableFile.h"
#include "core/NumberText.h"
#include "project/ProjectEditor.h"
#include "usermodels/UserModelDraft.h"
#include "usermodels/UserModels.h"

namespace quorvex {
namespace {

using Lines = std::vector<std::string>;
using Said = std::vector<std::string>;

constexpr const char* kTaken =
    "The Model ID you entered already exists in the database. Each Model ID must be unique. Please enter a different "
    "ID.";

// a sum of n coefficients times x
std::string Polynomial(int n) {
  std::string text;
  for (int i = 1; i <= n; ++i) text += (i > 1 ? "+" : "") + ("p" + std::to_string(i));
  return "(" + text + ")*x";
}

ModelClass& Store(Project& project, const UserModelDraft& draft, const ModelClass* edited = nullptr) {
  ModelCheck check = CheckUserModel(draft, project, edited);
  EXPECT_NE(check.Model, nullptr) << check.Message;
  return StoreUserModel(project, std::move(check.Model), edited);
}

TEST(CheckUserModel, RefusesInTheOrderOfItsTestsAndSaysWhere) {
  for (const auto& row : TableRows("models_refused.txt", 6)) {
    SCOPED_TRACE(row[1] + ": " + row[2]);
    const std::size_t variables = std::stoul(row[0]);
    const Lines lines = Split(row[2], '|');
    Project project = NewProject(variables, false, {});
    if (variables == 1) Store(project, {"Mine", "", {"a*x^b"}, {}});
    const ModelCheck check = CheckUserModel({row[1], "", lines, {}}, project, nullptr);
    EXPECT_EQ(check.Message, Unescaped(row[5]));
    EXPECT_EQ(check.Model, nullptr);
    EXPECT_EQ(check.Box, row[3] == "id" ? ModelCheck::kIdBox : std::stoi(row[3]));
    if (row[4].empty()) continue;
    const std::string& line = lines[static_cast<std::size_t>(check.Box)];
    EXPECT_EQ(line.substr(static_cast<std::size_t>(check.Start), static_cast<std::size_t>(check.Length)), row[4]);
  }
  EXPECT_EQ(CheckUserModel({"m", "", {Polynomial(101)}, {}}, NewProject(1, false, {}), nullptr).Message,
            "The model you entered contains 101 parameters. The maximum allowed is 100.");
}

TEST(CheckUserModel, TakesTheIdOfTheModelThatIsEditedInAnyCase) {
  Project project = NewProject(1, false, {});
  const ModelClass& mine = Store(project, {"Mine", "", {"a*x^b"}, {}});
  EXPECT_NE(CheckUserModel({"MINE", "", {"a*x^b"}, {}}, project, &mine).Model, nullptr);
  EXPECT_EQ(CheckUserModel({"a*x+b", "", {"a*x^b"}, {}}, project, &mine).Message, kTaken);
}

TEST(StoreUserModel, CarriesRulesDerivativesAndBoundsOverByName) {
  Project project = NewProject(1, false, {});
  ModelClass& first = Store(project, {"Mine", "old", {"a*exp(-Rate*x)"}, {}});
  Store(project, {"Later", "", {"a*x"}, {}});
  project.Changed = false;
  const int rate = EqualNoCase(first.Variables(1), "rate") ? 1 : 2;
  first.SetRule(rate, "* YMax");
  first.SetRuleConstant(rate, "0.5");
  first.SetBounds(rate, 0, 5);
  first.SetDerivative(rate, "-x*a*exp(-rate*x)");

  UserModelDraft draft = DraftOf(first);
  draft.id = "Renamed";
  draft.Description = "new";
  draft.FunctionList = {"b+a*exp(-RATE*x)+f1", "c*x"};
  const ModelClass& edited = Store(project, draft, &first);
  EXPECT_TRUE(project.Changed);
  EXPECT_EQ(edited.Description, "new");
  EXPECT_EQ(edited.NumDependentVar(), 4);
  for (int i = 1; i <= 4; ++i) {
    const bool kept = edited.Variables(i).size() > 1;
    EXPECT_EQ(edited.Rules(i), kept ? "* YMax" : "Value");
    EXPECT_EQ(edited.RuleConstant(i), kept ? "0.5" : "1");
    EXPECT_EQ(edited.Derivatives(i), kept ? "-x*a*exp(-rate*x)" : "Numerical");
    EXPECT_EQ(edited.Minimum(i), kept ? 0 : -HUGE_VAL);
    EXPECT_EQ(edited.Maximum(i), kept ? 5 : HUGE_VAL);
  }
  EXPECT_EQ(project.Models.Find("Mine"), nullptr);
  EXPECT_EQ(project.Models.Find("RENAMED"), &edited);
  const std::vector<ModelClass*> models = UserModels(project);
  ASSERT_EQ(models.size(), 2u);
  EXPECT_EQ(models[0], &edited);                                       // in its old place
  EXPECT_NE(project.Models.Add("mine", NewModelFor(1, {})), nullptr);  // the old key is free
}

TEST(CopyOf, StartsANewModelFromAnyOther) {
  const Project project = NewProject(1, false, {});
  const UserModelDraft draft = CopyOf(*project.Models.Find("a*x+b"));
  EXPECT_EQ(draft.id, "Copy of a*x+b");
  const ModelCheck check = CheckUserModel(draft, project, nullptr);
  ASSERT_NE(check.Model, nullptr);
  EXPECT_TRUE(check.Model->UserType);
  EXPECT_EQ(check.Model->IDIndex(), 0);
  EXPECT_EQ(check.Model->FunctionList(0), project.Models.Find("a*x+b")->FunctionList(0));
}

TEST(CompileStatus, TellsWhatTheLinesAreSoFar) {
  for (const auto& row : TableRows("model_statuses.txt", 3))
    EXPECT_EQ(CompileStatus({"", "", Split(row[0], '|'), {}}, std::stoul(row[1]), {}), row[2]);
  EXPECT_EQ(CompileStatus({"", "", {""}, {}}, 2, {}), "For example a*x1+b*x2");
  EXPECT_EQ(CompileStatus({"", "", {Polynomial(23)}, {}}, 1, {}),
            "Compiles. Coefficients: p1, p10, p11, p12, p13, p14, p15, p16, p17, p18, p19, p2, p20, p21, p22, p23, p3, "
            "p4, p5, p6 and 3 more.");
}

TEST(RemoveUserModel, AsksFirst) {
  Project project = NewProject(1, false, {});
  const std::size_t builtIn = project.Models.size();
  for (const char* id : {"p", "q", "r"}) Store(project, {id, "", {"a*x"}, {}});
  project.Changed = false;
  RecordingPrompter user;
  user.Answer = false;
  EXPECT_FALSE(RemoveUserModel(project, *project.Models.Find("q"), user));
  EXPECT_FALSE(RemoveAllUserModels(project, user));
  EXPECT_FALSE(project.Changed);
  EXPECT_EQ(UserModels(project).size(), 3u);
  EXPECT_EQ(
      user.Said,
      (Said{"ask: This action will remove the selected user defined model from this project. Are you sure you want "
            "to continue?",
            "ask: This action will remove all user defined models from this project. Are you sure you want to "
            "continue?"}));
  user.Answer = true;
  EXPECT_TRUE(RemoveUserModel(project, *project.Models.Find("q"), user));
  EXPECT_TRUE(project.Changed);
  EXPECT_EQ(UserModels(project).size(), 2u);
  EXPECT_TRUE(RemoveAllUserModels(project, user));
  EXPECT_EQ(project.Models.size(), builtIn);
}

TEST(DescribeModel, ListsEverythingOfIt) {
  Project project = NewProject(1, false, {});
  const ModelClass& model =
      Store(project, {"Decay", "With drift", {"a*exp(-b*x)+f1", "0.5*x"}, {{"a", {"* YMax", "2", "exp(-b*x)"}}}});
  EXPECT_EQ(DescribeModel(model),
            "ID: Decay\r\nModel Definition:\r\nY = a*exp(-b*x)+f1\r\nF1 = 0.5*x\r\nModel Description:\r\nWith "
            "drift\r\nRules:\r\nVariable a, Operation = * YMax, Value = 2\r\nVariable b, Operation = Value, Value = "
            "1\r\nDerivatives:\r\nVariable a, Derivative = exp(-b*x)\r\nVariable b, Derivative = Numerical");
}

// What undo keeps of a model belongs to its definition.
TEST(StoreUserModel, LetsUndoSayWhichSolutionsTheNewDefinitionCost) {
  const SolveData data{{{1, 2, 3, 4}}, {2, 4, 6.5, 7}, {1, 1, 1, 1}, {1, 1, 1, 1}};
  constexpr const char* kLost =
      "inform: 1 user defined model(s) could not be recovered because the definition has changed after this UNDO "
      "level.";
  for (const std::string what : {"description", "lines", "id", "removed"}) {
    Project project = NewProject(1, false, {});
    const Settings settings;
    RecordingPrompter user;
    ProjectEditor editor(project, settings, user);
    ModelClass& model = Store(project, {"Mine", "", {"a*x+b"}, {}});
    std::string log;
    SolveForm form;
    ASSERT_TRUE(model.Fit(data, settings, log, form)) << log;
    const UndoLabel label = UndoOperation::ClearFits;
    int action = kPushUndo;
    editor.UpdateUndoMenu(action, &label);

    UserModelDraft draft = DraftOf(model);
    if (what == "removed") {
      RemoveUserModel(project, model, user);
    } else {
      if (what == "description") draft.Description = "other";
      if (what == "lines") draft.FunctionList[0] = "a*x+c";
      if (what == "id") draft.id = "Other";
      const ModelClass& stored = Store(project, draft, &model);
      EXPECT_EQ(stored.Solved, what != "lines") << what;         // only the lines make another model of it
      EXPECT_NEAR(stored.RSS, stored.Solved ? 0.875 : 0, 1e-9);  // Syy - Sxy^2/Sxx = 16.1875 - 8.75^2/5
    }
    user.Said.clear();
    editor.EditUndo();
    EXPECT_EQ(user.Said, what == "description" ? Said{} : Said{kLost}) << what;
  }
}

}  // namespace
}  // namespace quorvex
