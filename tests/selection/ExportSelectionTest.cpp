#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "files/ProjectFile.h"
#include "selection/ExportSelection.h"
#include "selection/SelectionCase.h"
#include "solve/SolvedList.h"

namespace quorvex {
namespace {

TEST(ExportSelection, SavesAProjectThatOpensSolved) {
  const struct {
    const char* File;
    bool Weighted, Intercept, Products;
    Subset Variables;
    std::string id;
  } cases[] = {{"longley.csv", false, true, false, {0, 1, 2, 3, 4, 5}, "a*x1+b*x2+c*x3+d*x4+e*x5+f*x6+g"},
               {"longley.csv", false, false, false, {1, 2, 5}, "a*x1+b*x2+c*x3"},
               {"mtcars.txt", false, true, false, {5, 4}, "a+b*x1+c*x2"},
               {"mtcars.txt", false, false, false, {5, 4}, "a*x1+b*x2"},
               {"mtcars.txt", false, true, false, {4}, "a*x+b"},
               {"mtcars.txt", false, false, false, {4}, "a*x"},
               {"stackloss.txt", false, true, true, {0, 1, 3, 6}, "a*x1+b*x2+c*x3+d*x4+e"},
               {"plant_uptake_sd.txt", true, true, false, {0, 1}, "a+b*x1+c*x2"}};
  for (const auto& c : cases) {
    const DataSheet sheet = SelectionSheet(c.File, c.Weighted);
    VarSelect choices = ChoicesFor(sheet, SelectionProcedure::Forward, c.Products);
    const SelectionData data = DataFor(sheet, choices);
    const auto fit = SubsetSolver(data, c.Intercept, SelectionForm()).Fit(c.Variables);
    ASSERT_TRUE(fit);
    const TemporaryFolder folder;
    RecordingPrompter user;
    user.File = folder.Path("chosen.qvx");
    ASSERT_TRUE(ExportSelection(*fit, data, LocaleText(), user)) << user.Last();
    EXPECT_EQ(user.Last(), "inform: The file '" + *user.File +
                               "' contains the solved project which can be opened from the main Quorvex window.");

    Result<Project> opened = ReadProject(*user.File, LocaleText());
    ASSERT_TRUE(opened) << opened.error();
    EXPECT_EQ(opened->Sheet.IndependentVariables, c.Variables.size());
    EXPECT_EQ(opened->Sheet.HasStandardDeviation, c.Weighted);
    EXPECT_EQ(opened->Sheet.Headers[0], data.Names[c.Variables[0]]);
    EXPECT_EQ(opened->Sheet.Headers[c.Variables.size()], data.YName);
    const std::vector<SolvedItem> solved = SolvedItems(*opened, 1);
    ASSERT_EQ(solved.size(), 1u) << c.File;
    const ModelClass& model = *solved[0].Model;
    EXPECT_EQ(model.id, c.id);
    const auto close = [&](double value, double reference) { EXPECT_NEAR(value / reference, 1, 1e-9) << c.id; };
    close(model.RssNorm, fit->RSS);
    close(model.StdErr, fit->StdErr);
    if (c.Intercept) close(model.R2, fit->R2);
    EXPECT_EQ(static_cast<std::size_t>(model.DOFError), fit->DOFError);
    std::vector<SubsetCoefficient> coefficients = fit->Coefficients;
    if (c.Intercept) coefficients.insert(c.id[1] == '+' ? coefficients.begin() : coefficients.end(), *fit->Intercept);
    ASSERT_EQ(static_cast<std::size_t>(model.NumDependentVar()), coefficients.size());
    for (std::size_t i = 0; i < coefficients.size(); ++i) {
      EXPECT_EQ(model.Values(static_cast<int>(i) + 1), coefficients[i].Value) << c.id;
      close(model.StandardError(static_cast<int>(i) + 1), coefficients[i].StandardError);
    }
  }
}

TEST(ExportSelection, RefusesWhatAProjectHasNoRoomFor) {
  const std::string not_saved = " The variable selection results cannot be saved in Quorvex format.";
  RecordingPrompter user;
  SubsetFit fit;
  EXPECT_FALSE(ExportSelection(fit, {}, LocaleText(), user));
  EXPECT_EQ(user.Last(), "refuse: There are no variables left for a solution." + not_saved);
  fit.Variables.resize(21);
  EXPECT_FALSE(ExportSelection(fit, {}, LocaleText(), user));
  EXPECT_EQ(user.Last(),
            "refuse: You can have up to 20 independent variables in a Quorvex project, the current model contains 21." +
                not_saved);

  const DataSheet sheet = SelectionSheet("stackloss.txt");
  const SelectionData data = DataFor(sheet, ChoicesFor(sheet));
  const auto good = SubsetSolver(data, true, SelectionForm()).Fit({0, 1});
  EXPECT_FALSE(ExportSelection(*good, data, LocaleText(), user));  // no name was chosen
  EXPECT_EQ(user.Last(), "save: Save As|Project files (*.qvx)|qvx");
  user.File = "/nowhere/at all/chosen.qvx";
  EXPECT_FALSE(ExportSelection(*good, data, LocaleText(), user));
  EXPECT_EQ(user.Last().rfind("refuse: Error saving project to '/nowhere/at all/chosen.qvx'. ", 0), 0u) << user.Last();
}

}  // namespace
}  // namespace quorvex
