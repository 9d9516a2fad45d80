#include <gtest/gtest.h>

#include "RecordingClipboard.h"
#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "engine/UserModel.h"
#include "equation/CodeLibrary.h"
#include "results/EquationExport.h"
#include "results/SolvedProject.h"

namespace quorvex {
namespace {

using Said = std::vector<std::string>;

std::unique_ptr<ModelClass> Line(const std::string& text = "a*x+b") {
  std::unique_ptr<ModelClass> model = NewModelFor(1, {});
  model->SetID("m", {text});
  for (int i = 1; i <= model->NumDependentVar(); ++i) model->SetValue(i, i + 0.5);
  return model;
}

TEST(EquationText, FollowsTheOptionsThatAreRemembered) {
  Settings settings;
  EXPECT_EQ(EquationText(*Line(), ReadTextOptions(settings)), "Y = 1.5*x+2.5");
  StoreTextOptions(settings, {true, true});
  EXPECT_EQ(settings.Text("ReplaceOption", "TextExport"), "1");
  EXPECT_EQ(settings.Text("AppendParameters", "TextExport"), "1");
  EXPECT_EQ(EquationText(*Line(), ReadTextOptions(settings)), "Y = a*x+b\r\n\r\na = 1.5\r\nb = 2.5");
  StoreTextOptions(settings, {});
  EXPECT_EQ(EquationText(*Line(), ReadTextOptions(settings)), "Y = 1.5*x+2.5");
}

TEST(CopyExcelFormula, CopiesOrSaysWhyNot) {
  const struct {
    std::string model, column, row, said;
  } kCases[] = {
      {"a*x+b", "AA0", "1", "Please enter an Excel worksheet column from 'A' to 'IV'."},
      {"a*x+b", "B", "65537", "Please enter an Excel worksheet row from 1 to 65536."},
      {"a*psi(x)", "B", "2",
       "The equation you are exporting contains Quorvex intrinsic functions which Excel does not support."},
  };
  RecordingPrompter user;
  RecordingClipboard clipboard;
  for (const auto& c : kCases) {
    EXPECT_FALSE(CopyExcelFormula(*Line(c.model), c.column, c.row, true, clipboard, user));
    EXPECT_EQ(user.Last(), "refuse: " + c.said);
    EXPECT_EQ(clipboard.Held, "");
  }
  EXPECT_TRUE(CopyExcelFormula(*Line(), "b", "2", true, clipboard, user));
  EXPECT_TRUE(clipboard.Held.starts_with("=") && clipboard.Held.find("B2") != std::string::npos) << clipboard.Held;
  EXPECT_EQ(user.Last(),
            "inform: The clipboard contains the Excel function. \r\nTo use the function in a range of cells: \r\n1) In "
            "Excel, click on the first cell of the range where you want the equation results to appear.\r\n2) Choose "
            "'Edit - Paste'.\r\n3) Choose 'Edit - Copy'. This will place the function on the clipboard using relative "
            "indexing.\r\n4) Select the range of additional cells you where want the function results to appear.\r\n5) "
            "Choose 'Edit - Paste'.");
}

TEST(ExportCode, WritesTheFileThatTheUserNames) {
  const TemporaryFolder folder;
  RecordingPrompter user;
  EXPECT_FALSE(ExportCode(*Line(), ExprType::Basic, user));
  EXPECT_EQ(user.Said, Said{"save: Export as BASIC|BASIC files (*.bas)|bas"});
  user.File = folder.Path("line.bas");
  EXPECT_TRUE(ExportCode(*Line(), ExprType::Basic, user));
  EXPECT_TRUE(folder.Read("line.bas").starts_with("public function line(x as double) as double"));
  user.File = folder.Path("line.c");
  EXPECT_TRUE(ExportCode(*Line(), ExprType::C, user));
  EXPECT_EQ(user.Last(), "save: Export as C|C files (*.c)|c");
  EXPECT_TRUE(folder.Read("line.c").find("double line(double x)") != std::string::npos);
  user.File = folder.Path("none/line.c");
  EXPECT_FALSE(ExportCode(*Line(), ExprType::C, user));
  EXPECT_TRUE(user.Last().starts_with("refuse: Error writing to '" + *user.File + "'. ")) << user.Last();
}

TEST(SaveCode, GoesByTheNameThatTheUserGives) {
  const TemporaryFolder folder;
  RecordingPrompter user;
  Settings settings;
  EXPECT_EQ(&ReadCodeLanguage(settings), CodeLanguages().front());
  StoreCodeLanguage(settings, *LanguageOfFile("a.js"));
  EXPECT_EQ(&ReadCodeLanguage(settings), LanguageOfFile("a.js"));
  const auto save = [&](const std::string& file) {
    user.File = folder.Path(file);
    return SaveCode(*Line(), ReadCodeLanguage(settings), user);
  };
  EXPECT_FALSE(SaveCode(*Line(), ReadCodeLanguage(settings), user));
  EXPECT_EQ(user.Said, Said{"save: Export as Code|JavaScript files (*.js)|js|model.js"});
  EXPECT_TRUE(save("line.js"));
  EXPECT_NE(folder.Read("line.js").find("function line(x) {\n    const a = 1.5;\n    const b = 2.5;\n"),
            std::string::npos);
  EXPECT_TRUE(save("other.py"));
  EXPECT_NE(folder.Read("other.py").find("def other(x):"), std::string::npos);
  EXPECT_FALSE(save("line.doc"));
  EXPECT_EQ(user.Last(), "refuse: " + UnknownLanguageText(*user.File));
  EXPECT_FALSE(save("none/line.js"));
  EXPECT_TRUE(user.Last().starts_with("refuse: Error writing to '" + *user.File + "'. ")) << user.Last();
}

TEST(ModelsToExport, PrefersWhatIsSelectedThenSolvedThenTheUsersOwn) {
  Project project = LineProject();
  RecordingPrompter user;
  using Models = std::vector<ModelClass*>;
  EXPECT_EQ(ModelsToExport(project, {}, {}, user), Models{});
  EXPECT_EQ(user.Said, Said{"refuse: There is no solved model, and no user defined one, to be exported."});
  ModelClass& own = AddModel(project, "own", {"p*x"});
  own.UserType = true;
  const SolvedItem spline{nullptr, &project.Interpolations[0]};
  EXPECT_EQ(ModelsToExport(project, {spline}, {spline}, user), Models{&own});
  const SolvedItem line{&SolveModel(project, "a*x+b", 1), nullptr}, power{&SolveModel(project, "a+b/x", 1), nullptr};
  EXPECT_EQ(ModelsToExport(project, {spline}, {line, power, spline}, user), (Models{line.Model, power.Model}));
  EXPECT_EQ(ModelsToExport(project, {power, spline}, {line, power, spline}, user), Models{power.Model});
  EXPECT_EQ(ModelsToExport(project, {line, power}, {line, power}, user), (Models{line.Model, power.Model}));
  EXPECT_EQ(user.Said.size(), 1u);
}

}  // namespace
}  // namespace quorvex
