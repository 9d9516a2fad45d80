#include <gtest/gtest.h>

#include "RecordingPrompter.h"
#include "engine/UserModel.h"
#include "usermodels/RulesEdit.h"

namespace quorvex {
namespace {

using Said = std::vector<std::string>;

std::unique_ptr<ModelClass> Model(const std::string& line, std::size_t variables = 1, const LocaleText& locale = {}) {
  std::unique_ptr<ModelClass> model = NewModelFor(variables, locale);
  model->SetID("m", {line});
  EXPECT_TRUE(model->IsValidEquation());
  return model;
}

TEST(RuleOperations, HaveTheirFormsForEachVariable) {
  EXPECT_EQ(RuleOperations(1), (Said{"Value", "/ YMin", "/ YMax", "/ YAvg", "/ (YMax-YMin)", "* YMin", "* YMax",
                                     "* YAvg", "* (YMax-YMin)", "/ XMin", "/ XMax", "/ XAvg", "/ (XMax-XMin)", "* XMin",
                                     "* XMax", "* XAvg", "* (XMax-XMin)", "/ N", "* N"}));
  const Said two = RuleOperations(2);
  ASSERT_EQ(two.size(), 27u);
  EXPECT_EQ(two[9], "/ X1Min");
  EXPECT_EQ(two[12], "/ (X1Max-X1Min)");
  EXPECT_EQ(two[24], "* (X2Max-X2Min)");
}

// The engine knows every rule that is offered, but "/ YAvg" with one variable.
TEST(RuleOperations, AreThoseThatAFitUnderstands) {
  const SolveData data{{{1, 2, 4}, {3, 5, 6}}, {2, 5, 9}, {1, 1, 1}, {1, 1, 1}};
  for (const std::size_t variables : {1u, 2u}) {
    auto model = Model(variables == 1 ? "a*x" : "a*x1*x2", variables);
    for (const std::string& operation : RuleOperations(static_cast<int>(variables))) {
      model->SetRule(1, operation);
      std::vector<double> a;
      EXPECT_EQ(model->RuleEstimate(data, a), variables == 2 || operation != "/ YAvg") << operation;
    }
  }
}

TEST(RulesEdit, ShowsCommitsAndStores) {
  auto model = Model("a*exp(-b*x)+c");
  model->SetRule(2, "/(ymax-ymin)");  // as files have it
  model->SetRuleConstant(2, "2.5");
  model->SetRule(3, "/yagv");
  RecordingPrompter user;
  RulesEdit edit(*model, {}, user);
  EXPECT_EQ(edit.Line(1), "a: 1 (Value)");
  EXPECT_EQ(edit.Line(2), "b: 2.5 / (YMax-YMin)");
  EXPECT_EQ(edit.Line(3), "c: 1 /yagv");
  EXPECT_EQ(edit.Operations().size(), 20u);

  for (const char* bad : {"", "two", "1,5"}) EXPECT_FALSE(edit.Assign(1, 5, bad));
  EXPECT_EQ(user.Said, Said(3, "refuse: Please enter a valid rule value for variable 'a'"));
  EXPECT_EQ(edit.Line(1), "a: 1 (Value)");
  EXPECT_TRUE(edit.Assign(1, 5, " 1.5 "));
  EXPECT_EQ(edit.Line(1), "a: 1.5 * YMin");
  EXPECT_TRUE(edit.StoreIn(*model));
  EXPECT_EQ(model->Rules(1), "* YMin");
  EXPECT_EQ(model->RuleConstant(1), "1.5");
  EXPECT_FALSE(edit.StoreIn(*model));  // nothing new

  const LocaleText comma{.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.'};
  auto german = Model("a*x", 1, comma);
  RulesEdit other(*german, comma, user);
  EXPECT_TRUE(other.Assign(1, 0, "1,5"));
  EXPECT_EQ(other.Line(1), "a: 1,5 (Value)");
}

TEST(RulesEdit, AsksBeforeItLeavesWhatIsNotCommitted) {
  const auto model = Model("a*x+b");
  RecordingPrompter user;
  RulesEdit edit(*model, {}, user);
  EXPECT_TRUE(edit.Leave(1, 0, "1", Leaving::Coefficient));
  EXPECT_TRUE(user.Said.empty());
  user.Answer = false;
  EXPECT_TRUE(edit.Leave(1, 2, "1", Leaving::Coefficient));
  EXPECT_TRUE(edit.Leave(1, 0, "x", Leaving::Dialog));
  EXPECT_EQ(edit.Line(1), "a: 1 (Value)");
  user.Answer = true;
  EXPECT_TRUE(edit.Leave(1, 2, "1", Leaving::Coefficient));
  EXPECT_FALSE(edit.Leave(2, 0, "x", Leaving::Dialog));
  EXPECT_EQ(edit.Line(1), "a: 1 / YMax");
  EXPECT_EQ(edit.Line(2), "b: 1 (Value)");
  EXPECT_EQ(user.Said,
            (Said{"ask: Commit changes to variable 'a'?", "ask: Commit changes to variable 'a' before closing?",
                  "ask: Commit changes to variable 'a'?", "ask: Commit changes to variable 'b' before closing?",
                  "refuse: Please enter a valid rule value for variable 'b'"}));
}

TEST(RulesEdit, ResetsOneOrAll) {
  for (const bool all : {false, true}) {
    const auto model = Model("a*x+b");
    RecordingPrompter user;
    RulesEdit edit(*model, {}, user);
    EXPECT_TRUE(edit.Assign(1, 3, "2") && edit.Assign(2, 4, "3"));
    user.Answer = all;
    edit.Defaults(2);
    EXPECT_EQ(user.Said, Said{"ask: Reset ALL rules to defaults? (selecting 'No' will only reset the selected rule)"});
    EXPECT_EQ(edit.Line(1), all ? "a: 1 (Value)" : "a: 2 / YAvg");
    EXPECT_EQ(edit.Line(2), "b: 1 (Value)");
  }
}

}  // namespace
}  // namespace quorvex
