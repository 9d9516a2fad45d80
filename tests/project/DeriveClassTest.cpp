#include <gtest/gtest.h>

#include "RecordingPrompter.h"
#include "core/Limits.h"
#include "project/DeriveClass.h"
#include "sheet/EditedSheet.h"

namespace quorvex {
namespace {

constexpr const char* kNothing =
    "refuse: Nothing is selected to add. You must first select one or more columns to add from the 'Data in Current "
    "Project' list.";

// Two X's, Y and deviations, with a text and empty cells among them.
EditedSheet Source() {
  EditedSheet source("1 10 3 0.1\n2 - t -\n- 30 5 0.3\n", 2, true);
  source.Sheet.Headers = {"Time", "", "Heat", "SD"};
  source.Sheet.Formats[2].NumberFormat = "0.00";
  return source;
}

TEST(DeriveClass, RefusesWhatIsNoSelection) {
  const EditedSheet source = Source();
  DeriveClass derive(source.Sheet);
  RecordingPrompter user;
  EXPECT_EQ(derive.Data(), (std::vector<std::string>{"Time", "Column 2", "Heat", "SD", "<Blank Column>"}));
  EXPECT_FALSE(derive.AddX({}, user));
  EXPECT_EQ(user.Last(), kNothing);
  EXPECT_FALSE(derive.AddY({}, user));
  EXPECT_EQ(user.Last(), kNothing);
  EXPECT_FALSE(derive.AddY({0, 2}, user));
  EXPECT_EQ(user.Last(),
            "refuse: A project can only contain a single dependent variable (Y). Please select a single item from the "
            "list of data in the current project.");
  EXPECT_TRUE(derive.AddY({2}, user));
  user.Answer = false;
  EXPECT_FALSE(derive.AddY({0}, user));
  EXPECT_EQ(user.Last(),
            "ask: A project can only contain a single dependent variable (Y) and there is already one specified. "
            "Replace it with the selected item?");
  EXPECT_EQ(derive.NewY(), std::vector<std::string>{"Heat"});
  user.Answer = true;
  EXPECT_TRUE(derive.AddY({0}, user));
  EXPECT_EQ(derive.NewY(), std::vector<std::string>{"Time"});
  EXPECT_FALSE(derive.IsComplete(user));
  EXPECT_EQ(user.Last(), "refuse: You must select at least one independent variable for the new project.");
  EXPECT_TRUE(derive.AddX(std::vector<std::size_t>(kMostIndependentVariables, 4), user));
  EXPECT_FALSE(derive.AddX({1}, user));
  EXPECT_EQ(user.Last(), "refuse: A project can have no more than 20 independent variables (X).");
  EXPECT_TRUE(derive.IsComplete(user));
}

TEST(DeriveClass, CopiesColumnsWithTheirHeadingsAndFormats) {
  struct Case {
    std::vector<std::size_t> X, Y;
    bool ShowSD, UseSD;
    std::vector<std::string> Headers;
    const char* Cells;
  };
  const Case cases[] = {
      {{2}, {0}, true, true, {"Heat", "Time", "SD"}, "3 1 0.1\nt 2 -\n5 - 0.3\n"},
      {{2}, {0}, true, false, {"Heat", "Time", "StDev"}, "3 1 -\nt 2 -\n5 - -\n"},
      {{2}, {0}, false, true, {"Heat", "Time"}, "3 1\nt 2\n5 -\n"},
      {{1, 4, 3}, {}, false, false, {"", "X2", "SD", "Y"}, "10 - 0.1 -\n- - - -\n30 - 0.3 -\n"},
      {{4}, {4}, false, false, {"X", "Y"}, ""},
  };
  const EditedSheet source = Source();
  for (const Case& c : cases) {
    RecordingPrompter user;
    DeriveClass derive(source.Sheet);
    derive.ShowSD = c.ShowSD;
    derive.UseSD = c.UseSD;
    EXPECT_TRUE(derive.AddX(c.X, user));
    if (!c.Y.empty()) {
      EXPECT_TRUE(derive.AddY(c.Y, user));
    }
    EXPECT_EQ(derive.Kind(), (ProjectKind{c.X.size(), c.ShowSD}));
    EditedSheet derived("", c.X.size(), c.ShowSD);
    derived.Sheet = derive.NewSheet();
    EXPECT_EQ(derived.Sheet.Headers, c.Headers);
    EXPECT_EQ(derived.Cells(), c.Cells);
    for (std::size_t v = 0; v < c.X.size(); ++v)
      EXPECT_EQ(derived.Sheet.Formats[v].NumberFormat, c.X[v] == 2 ? "0.00" : "General");
  }
}

TEST(DeriveClass, TakesEntriesOutByTheirPlaces) {
  const EditedSheet source = Source();
  RecordingPrompter user;
  DeriveClass derive(source.Sheet);
  EXPECT_TRUE(derive.ShowSD && derive.UseSD);
  derive.AddX({0, 4, 2, 4}, user);
  derive.RemoveX({1, 2});
  EXPECT_EQ(derive.NewX(), (std::vector<std::string>{"Time", "<Blank Column>"}));
  derive.RemoveX({});
  EXPECT_EQ(derive.NewX().size(), 2u);
  derive.AddY({0}, user);
  derive.RemoveY();
  EXPECT_TRUE(derive.NewY().empty());
  EXPECT_TRUE(user.Said.empty());
}

}  // namespace
}  // namespace quorvex
