#include <gtest/gtest.h>

#include "RecordingPrompter.h"
#include "engine/UserModel.h"
#include "usermodels/PartialsEdit.h"

namespace quorvex {
namespace {

using Said = std::vector<std::string>;

TEST(PartialsEdit, TakesWhatIsADerivativeOfTheModel) {
  const struct {
    std::string text, message;
    std::string kept = "";  // where it is not as typed
    std::size_t variables = 1;
  } kCases[] = {
      {"exp(-b*x)", ""},
      {" 2 ", "", "2"},  // neither x nor coefficients
      {"B*f1+x", ""},
      {"NUMERICAL", "", "Numerical"},
      {"", "The derivative equation you entered for variable 'a' is not valid. Please check the equation syntax."},
      {"exp(", "The derivative equation you entered for variable 'a' is not valid. Please check the equation syntax."},
      {"f2", "The derivative equation you entered for variable 'a' is not valid. Please check the equation syntax."},
      {"k*x+z(",
       "The derivative equation you entered for variable 'a' is not valid. Please check the equation syntax."},
      {"b*k",
       "The derivative entered for variable 'a' contains the variable 'k' which does not appear in the original "
       "equation. "},
      {"k*q*q",
       "The derivative entered for variable 'a' contains variables which do not appear in the original equation. "},
      {"k*x2",
       "The derivative entered for variable 'a' contains independent variables (x) that the original equation does not "
       "contain. ",
       "", 2},
      {"x1", "", "", 2},
  };
  for (const auto& c : kCases) {
    const std::unique_ptr<ModelClass> model = NewModelFor(c.variables, {});
    model->SetID("m", {c.variables == 1 ? "a*exp(-b*x)+f1" : "a*exp(-b*x1)", "b^2"});
    RecordingPrompter user;
    PartialsEdit edit(*model, user);
    EXPECT_EQ(edit.Commit(1, c.text), c.message.empty()) << c.text;
    EXPECT_EQ(user.Said, c.message.empty() ? Said{} : Said{"refuse: " + c.message}) << c.text;
    EXPECT_EQ(edit.Text(1), !c.message.empty() ? "Numerical" : c.kept.empty() ? c.text : c.kept);
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
