#include <gtest/gtest.h>

#include "RecordingPrompter.h"
#include "TableFile.h"
#include "engine/UserModel.h"
#include "usermodels/PartialsEdit.h"

namespace quorvex {
namespace {

using Said = std::vector<std::string>;

TEST(PartialsEdit, TakesWhatIsADerivativeOfTheModel) {
  for (const auto& row : TableRows("derivatives_typed.txt", 4)) {
    const std::size_t variables = std::stoul(row[1]);
    const std::unique_ptr<ModelClass> model = NewModelFor(variables, {});
    model->SetID("m", {variables == 1 ? "a*exp(-b*x)+f1" : "a*exp(-b*x1)", "b^2"});
    RecordingPrompter user;
    PartialsEdit edit(*model, user);
    EXPECT_EQ(edit.Commit(1, row[0]), row[3].empty()) << row[0];
    EXPECT_EQ(user.Said, row[3].empty() ? Said{} : Said{"refuse: " + row[3]}) << row[0];
    EXPECT_EQ(edit.Text(1), row[2]);
    EXPECT_EQ(edit.Text(2), "Numerical");
  }
}

TEST(PartialsEdit, AsksBeforeItLeavesOrResets) {
  const std::unique_ptr<ModelClass> model = NewModelFor(1, {});
  model->SetID("m", {"a*x+b"});
  RecordingPrompter user;
  PartialsEdit edit(*model, user);
  EXPECT_TRUE(edit.Leave(1, "Numerical", Leaving::Coefficient));
  EXPECT_TRUE(edit.Leave(1, "x", Leaving::Coefficient));
  EXPECT_FALSE(edit.Leave(2, "q", Leaving::Dialog));
  user.Answer = false;
  EXPECT_TRUE(edit.Leave(2, "q", Leaving::Dialog));
  EXPECT_FALSE(edit.Default());
  EXPECT_EQ(edit.Text(1), "x");
  edit.StoreIn(*model);
  EXPECT_EQ(model->Derivatives(1), "x");
  EXPECT_EQ(model->Derivatives(2), "Numerical");
  user.Answer = true;
  EXPECT_TRUE(edit.Default());
  EXPECT_EQ(edit.Text(1), "Numerical");
  EXPECT_EQ(
      user.Said,
      (Said{"ask: Commit changes to variable 'a'?", "ask: Commit changes to variable 'b' before closing?",
            "refuse: The derivative entered for variable 'b' contains the variable 'q' which does not appear in "
            "the original equation. ",
            "ask: Commit changes to variable 'b' before closing?", "ask: Reset ALL partial derivatives to defaults?",
            "ask: Reset ALL partial derivatives to defaults?"}));
}

}  // namespace
}  // namespace quorvex
