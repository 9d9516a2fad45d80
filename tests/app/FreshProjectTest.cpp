#include <gtest/gtest.h>

#include "TemporaryFolder.h"
#include "app/FreshProject.h"
#include "files/ModelFile.h"
#include "usermodels/UserModelDraft.h"
#include "usermodels/UserModels.h"

namespace quorvex {
namespace {

TEST(FreshProject, IsAsThePreferencesWantIt) {
  const TemporaryFolder folder;
  const std::string file = folder.Path("mine.equ");
  Project source = NewProject(2, false, {});
  StoreUserModel(source, CheckUserModel({"Mine", "", {"a*x1+x2"}, {}}, source, nullptr).Model, nullptr);
  ASSERT_EQ(WriteUserModels(file, 2, source.Models, {}), 0);
  Settings settings;
  settings.Set("usermodelfile", file);
  settings.Set("maxiterations", "77");
  EXPECT_TRUE(UserModels(FreshProject({2, true}, "Untitled", settings, {})).empty()) << "nobody asked for them";
  settings.Set("loadusermodels", "1");
  const Project project = FreshProject({2, true}, "Untitled 3", settings, {});
  EXPECT_EQ(project.FileName, "Untitled 3");
  EXPECT_TRUE(project.Sheet.IndependentVariables == 2 && project.Sheet.HasStandardDeviation);
  EXPECT_NE(project.Models.Find("Mine"), nullptr);
  EXPECT_EQ(project.Limits.MaxIterations, 77);
  EXPECT_FALSE(project.Changed || project.HasFile);
}

TEST(ProjectKind, StaysWithinWhatASheetTakes) {
  Settings settings;
  for (const auto& [stored, variables] : {std::pair<const char*, std::size_t>{"3", 3}, {"-1", 1}, {"900", 20}}) {
    settings.Set("default_numiv", stored);
    EXPECT_EQ(DefaultKind(settings).IndependentVariables, variables) << stored;
  }
  for (const auto& [columns, variables] : {std::pair<std::size_t, std::size_t>{0, 1}, {1, 1}, {2, 1}, {4, 3}, {40, 20}})
    EXPECT_EQ(KindForColumns(std::vector<std::string>(columns, "a")), (ProjectKind{variables, false})) << columns;
  EXPECT_EQ(KindForColumns({"t", "y", "sd"}), (ProjectKind{1, true}));
  EXPECT_EQ(KindForColumns({"t", "error", "y", "z"}), (ProjectKind{2, true}));
  EXPECT_EQ(KindForColumns({"t", "error"}), (ProjectKind{1, false}));
}

TEST(NextUntitled, TakesTheFirstNumberThatIsFree) {
  EXPECT_EQ(NextUntitled({}), "Untitled");
  EXPECT_EQ(NextUntitled({"Untitled 3", "Untitled"}), "Untitled 2");
  EXPECT_EQ(NextUntitled({"Untitled", "/a/Untitled 3", "Untitled 2"}), "Untitled 3");
}

}  // namespace
}  // namespace quorvex
