#include <gtest/gtest.h>

#include "batch/FitModels.h"
#include "engine/EqClass.h"

namespace quorvex {
namespace {

// Presses Pause when a search has just come to its end.
struct LateForm : cfgSolve {
  int Searches = 0;
  std::string RequestWindows() override { return ""; }
  void ShowConverging(bool running) override {
    Searches += running ? 1 : 0;
    Paused |= !running;
  }
};

TEST(FitModels, DoesNotTakeALatePauseForTheNextModel) {
  ModelCollection models;
  for (const char* line : {"a*exp(b*x)", "a*x^b"}) {
    auto model = std::make_unique<EqClass>(LocaleText{});
    model->SetID(line, {line});
    model->UserType = model->Solve = true;
    models.Add(line, std::move(model));
  }
  const SolveData data{{{1, 2, 3, 4}}, {2.1, 3.9, 6.2, 7.8}, {1, 1, 1, 1}, {1, 1, 1, 1}};
  LateForm form;
  std::string log;
  EXPECT_TRUE(FitModels(form, models, data, MacroSetup(), Settings(), log));
  EXPECT_EQ(form.Searches, 2);
  EXPECT_EQ(log.find("Iterations stopped by user."), std::string::npos) << log;
  for (const auto& model : models) EXPECT_TRUE(model->Solved) << model->id;
}

}  // namespace
}  // namespace quorvex
