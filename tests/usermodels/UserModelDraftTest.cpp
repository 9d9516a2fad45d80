#include <gtest/gtest.h>

#include "RecordingPrompter.h"
#include "core/NumberText.h"
#include "project/ProjectEditor.h"
#include "usermodels/UserModelDraft.h"
#include "usermodels/UserModels.h"

namespace quorvex {
namespace {

using Lines = std::vector<std::string>;
using Said = std::vector<std::string>;

constexpr const char* kEmptyF1 =
    "The supporting function F1 must have a valid entry. If you intend not to use this function, you can remove it by "
    "clicking on the 'Remove F1' button.";
constexpr const char* kEmptyF3 =
    "The supporting functions F1 through F3 must have valid entries. If you intend not to use all of the functions, "
    "you "
    "can remove them sequentially by clicking on the 'Remove F3' button.";
constexpr const char* kTaken =
    "The Model ID you entered already exists in the database. Each Model ID must be unique. Please enter a different "
    "ID.";
constexpr const char* kCyclic =
    "Cyclic expression detected. A function (Fn = ?) which points to a function that points back to itself cannot be "
    "resolved. Please check your ";
constexpr const char* kLacksFunction = " definition is missing a required function (Fn = ?). Please recheck your ";
constexpr const char* kInvalid = "The model you entered is not valid.\r\n";

std::string SyntaxError(const std::string& why) {
  return std::string(kInvalid) + why + " Please check the equation syntax.";
}
std::string Lacks(const std::string& what) {
  return std::string(kInvalid) + what + ".\r\nPlease check the equation syntax.";
}
std::string LacksVariables(const std::string& count) {
  return "The model you entered has " + count +
         ", and the current project has 2. All independent variables from 'X1' to 'X2' must appear in the model.";
}

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
  const struct {
    std::string id;
    Lines lines;
    std::string message;
    int box = 0;
    std::string token = "";  // that is selected
    std::size_t variables = 1;
  } kCases[] = {
      // Completeness, uniqueness.
      {" ", {"", ""}, "You must enter a Model ID.", ModelCheck::kIdBox},
      {"m", {"", " "}, kEmptyF1, 1},
      {"m", {"a*x", "1", "", "x"}, kEmptyF3, 2},
      {"m", {" "}, "Please enter a valid equation.", 0},
      {"A*X+B", {""}, "Please enter a valid equation.", 0},
      {" A*X+B ", {"2*"}, kTaken, ModelCheck::kIdBox},
      {"MINE", {"a*x"}, kTaken, ModelCheck::kIdBox},
      // The model.
      {"m", {Polynomial(101)}, "The model you entered contains 101 parameters. The maximum allowed is 100."},
      {"m", {"a*x+f1", "f1"}, kCyclic + std::string("model definition.")},
      {"m", {"a*x+f2", "x"}, "The model" + std::string(kLacksFunction) + "model definition."},
      {"m", {"a*x)"}, SyntaxError("Unexpected token ')'."), 0, ")"},
      {"m", {"a+b*/x"}, SyntaxError("Unexpected token '/'."), 0, "/"},
      {"m", {"f1+a*x Rate", "x"}, SyntaxError("Unexpected token 'Rate'."), 0, "Rate"},
      {"m", {"a*"}, SyntaxError("Expected end of model.")},
      {"m", {"a*f1", "exp 2*x"}, SyntaxError("Missing token '(' for function 'exp'."), 1, "2"},
      {"m", {"2*x"}, Lacks("It does not appear to contain any fitting parameters")},
      {"m", {"a+b"}, Lacks("It does not appear to contain the independent variable 'X'")},
      // Several variables.
      {"m", {"a*x1+f1*x2", "f1"}, kCyclic + std::string("equation definition."), 0, "", 2},
      {"m", {"a*x1+f1*x2"}, "The equation" + std::string(kLacksFunction) + "equation definition.", 0, "", 2},
      {"m", {"a*x1"}, LacksVariables("1 independent variable"), 0, "", 2},
      {"m", {"a*x1+x3"}, LacksVariables("3 independent variables"), 0, "", 2},
      {"m", {"a+b"}, Lacks("It does not appear to contain the independent variables from 'X1' to 'X3'"), 0, "", 3},
      {"m", {"a*x1+b*x3"}, Lacks("At least one of the independent variables from 'X1' to 'X3' is missing"), 0, "", 3},
  };
  for (const auto& c : kCases) {
    Project project = NewProject(c.variables, false, {});
    if (c.variables == 1) Store(project, {"Mine", "", {"a*x^b"}, {}});
    const ModelCheck check = CheckUserModel({c.id, "", c.lines, {}}, project, nullptr);
    EXPECT_EQ(check.Message, c.message);
    EXPECT_EQ(check.Model == nullptr, !c.message.empty()) << c.lines[0];
    EXPECT_EQ(check.Box, c.box) << c.lines[0];
    if (!c.token.empty()) {
      const std::string& line = c.lines[static_cast<std::size_t>(check.Box)];
      EXPECT_EQ(line.substr(static_cast<std::size_t>(check.Start), static_cast<std::size_t>(check.Length)), c.token);
    }
    if (check.Model != nullptr) {
      EXPECT_EQ(check.Model->id, "m");
      EXPECT_EQ(check.Model->Group, "User Defined");
      EXPECT_TRUE(check.Model->UserType);
      EXPECT_EQ(check.Model->SolveType, 0);
    }
  }
}

TEST(CheckUserModel, TakesTheIdOfTheModelThatIsEditedInAnyCase) {
  Project project = NewProject(1, false, {});
  const ModelClass& mine = Store(project, {"Mine", "", {"a*x^b"}, {}});
  EXPECT_NE(CheckUserModel({"MINE", "", {"a*x^b"}, {}}, project, &mine).Model, nullptr);
  EXPECT_EQ(CheckUserModel({"a*x+b", "", {"a*x^b"}, {}}, project, &mine).Message, kTaken);
}

TEST(StoreUserModel, CarriesRulesAndDerivativesOverByName) {
  Project project = NewProject(1, false, {});
  ModelClass& first = Store(project, {"Mine", "old", {"a*exp(-Rate*x)"}, {}});
  Store(project, {"Later", "", {"a*x"}, {}});
  project.Changed = false;
  const int rate = EqualNoCase(first.Variables(1), "rate") ? 1 : 2;
  first.SetRule(rate, "* YMax");
  first.SetRuleConstant(rate, "0.5");
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
  EXPECT_EQ(check.Model->IDIndex, 0);
  EXPECT_EQ(check.Model->FunctionList(0), project.Models.Find("a*x+b")->FunctionList(0));
}

TEST(CompileStatus, TellsWhatTheLinesAreSoFar) {
  const struct {
    Lines lines;
    std::string status;
    std::size_t variables = 1;
  } kCases[] = {
      {{" "}, "For example a*exp(-b*x)"},
      {{""}, "For example a*x1+b*x2", 2},
      {{"a*exp("}, "Not a model yet: Expected end of model."},
      {{"a*f1", "x*/2"}, "Not a model yet, in F1: Unexpected token '/'."},
      {{"a*f1"}, "Not a model yet: a function that is referred to is missing."},
      {{"a*f1", "f1"}, "Not a model yet: a function refers back to itself."},
      {{"2*x"}, "Not a model yet: it has no coefficients."},
      {{"a"}, "Not a model yet: it has no independent variable."},
      {{"a*exp(-k*x)"}, "Compiles. Coefficients: a, k."},
      {{"a*x+f1", "b", "("}, "Compiles. Coefficients: a, b. Not used: F2."},
      {{"a*x", "1", "2"}, "Compiles. Coefficients: a. Not used: F1, F2."},
      {{"Y=a*x+1e3+5"},
       "Compiles. '=' compares: it gives -1 where both sides are equal and 0 elsewhere. '1e3+5' is not a number and "
       "counts as 0. Coefficients: Y, a."},
      {{Polynomial(23)},
       "Compiles. Coefficients: p1, p10, p11, p12, p13, p14, p15, p16, p17, p18, p19, p2, p20, p21, p22, p23, p3, p4, "
       "p5, p6 and 3 more."},
  };
  for (const auto& c : kCases) EXPECT_EQ(CompileStatus({"", "", c.lines, {}}, c.variables, {}), c.status);
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
