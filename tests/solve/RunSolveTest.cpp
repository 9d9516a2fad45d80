// A run over the models of a project on several threads, against the same run on one.

#include <gtest/gtest.h>

#include <cmath>

#include "core/JsonText.h"
#include "engine/LoadModelCatalog.h"
#include "results/SolvedProject.h"
#include "solve/RunSolve.h"

namespace quorvex {
namespace {

Project DecayProject() {
  std::vector<double> x, y;
  for (int i = 1; i <= 120; ++i) {
    x.push_back(0.05 * i);
    y.push_back(6 * std::exp(-x.back()) + 0.5 + 0.02 * std::sin(50 * x.back()));
  }
  Project project = ProjectOf({x, y});
  for (const auto& model : project.Models) {
    model->Solve = model->IDIndex() % 7 == 0;
    model->SolveType = 0;
  }
  // One that begins where it has no value and is found by trying harder, one that has none anywhere, one with a memory,
  // one with a sweep.
  AddModel(project, "lost", {"a*exp(b*x)+ln(c-x)"}).Solve = true;
  project.Models.Find("lost")->SetRuleConstant(3, "2");
  AddModel(project, "none", {"a+b*ln(-x)"}).Solve = true;
  AddModel(project, "random", {"a*exp(-b*x)+c+rnd(1)*1e-6"}).Solve = true;
  ModelClass& sweep = AddModel(project, "sweep", {"a*exp(-b*x)+c"});
  sweep.Solve = sweep.SpecifyICComplete = true;
  sweep.SetICRange({{1, 9, 5}, {0.1, 3, 4}, {0, 0, 1}});
  project.Interpolations[0].Solve = true;
  return project;
}

// What a progress window is told of the run, and a button that is pressed at a turn.
struct NotingProgress : SolveProgress {
  int Turns = 0, AbortAt = 0;
  std::string Told;
  void Yield() override { Aborted = Aborted || ++Turns == AbortAt; }
  void SetProgress(int done, int of) override {
    Told += std::to_string(done) + '/' + std::to_string(of) + '\n';
    Yield();
  }
  void SetStatusLabel(const std::string& text) override {
    if (text.starts_with("Solving Model")) Told += text + '\n';  // of a second try one is told while it goes on
  }
};

struct Ran {
  std::string Log, Outcome, Answers, Told;
};

Ran SolveOn(int threads, NotingProgress form = {}) {
  Project project = DecayProject();
  Settings settings;
  settings.Threads = threads;
  settings.SetFlag("tryharder", true);
  Ran ran;
  const SolveData data = GatherData(project.Sheet).Points;
  const SolveOutcome outcome = RunSolve(project, data, settings, ran.Log, form);
  ran.Told = form.Told;
  ran.Outcome = std::to_string(outcome.Asked) + (outcome.Aborted ? " aborted\n" : "\n");
  for (const SolvedItem& one : outcome.Solved) ran.Outcome += "solved " + one.Name() + '\n';
  for (const FailedFit& one : outcome.Failed) {
    ran.Outcome += "failed " + one.Object.Name() + (one.TriedHarder ? " at a second try, too" : "");
    for (const double value : one.Values) ran.Outcome += ' ' + JsonNumber(value);
    ran.Outcome += '\n';
  }
  for (const auto& model : project.Models) {
    ran.Answers += model->id + ' ' + (model->Solved ? "solved " : "") + model->FoundBy + '|' + model->Failure + '|';
    EXPECT_FALSE(model->Solve || model->SpecifyICComplete);
    if (model->Solved)
      for (int i = 1; i <= model->NumDependentVar(); ++i)
        ran.Answers += ' ' + JsonNumber(model->Values(i)) + ' ' + JsonNumber(model->StandardError(i));
    ran.Answers += '\n';
  }
  return ran;
}

TEST(ParallelRunSolve, IsTheSameOnAnyNumberOfThreads) {
  const Ran alone = SolveOn(1);
  EXPECT_NE(alone.Answers.find("\nlost solved "), std::string::npos) << alone.Answers;
  EXPECT_NE(alone.Outcome.find("failed none at a second try, too"), std::string::npos) << alone.Outcome;
  EXPECT_NE(alone.Log.find("20 of 20 IC's successful"), std::string::npos);
  for (const int threads : {2, 3, 16}) {
    SCOPED_TRACE(threads);
    const Ran ran = SolveOn(threads);
    EXPECT_EQ(ran.Log, alone.Log);
    EXPECT_EQ(ran.Outcome, alone.Outcome);
    EXPECT_EQ(ran.Answers, alone.Answers);
    EXPECT_EQ(ran.Told, alone.Told);
    // An abort leaves what came before it.
    NotingProgress form;
    form.AbortAt = 9;
    const Ran aborted = SolveOn(threads, form);
    const std::size_t second = alone.Log.find("Beginning", 1);
    EXPECT_EQ(aborted.Log.substr(0, second), alone.Log.substr(0, second));
    EXPECT_TRUE(aborted.Log.ends_with("\r\nSOLUTION PROCESS ABORTED BY USER.\r\n"));
    EXPECT_TRUE(alone.Told.starts_with(aborted.Told)) << aborted.Told;
    EXPECT_EQ(aborted.Outcome.find("failed"), std::string::npos);
  }
}

}  // namespace
}  // namespace quorvex
