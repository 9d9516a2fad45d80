#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <thread>
#include <tuple>

#include "engine/FitEach.h"
#include "engine/FitSideBySide.h"
#include "engine/LoadModelCatalog.h"
#include "engine/Points.h"
#include "engine/UserModel.h"

namespace quorvex {
namespace {

SolveData Decay(std::size_t points) {
  std::vector<double> x, y;
  for (std::size_t i = 0; i < points; ++i) {
    x.push_back(0.02 * static_cast<double>(i + 1));
    y.push_back(6 * std::exp(-x.back()) + 0.5 + 0.01 * std::sin(50 * x.back()));
  }
  return Points({std::move(x)}, std::move(y));
}

// Models of every kind: of the catalogue, with steps and memory of their own, in a sweep, and without an answer.
ModelCollection Models() {
  ModelCollection models;
  LoadModelCatalog(models, 1, LocaleText());
  const auto add = [&](const char* line) {
    auto model = CompileModel(line, {line}, 1, LocaleText());
    model->UserType = true;
    return models.Add(line, std::move(model));
  };
  add("a*exp(-b*x)+rnd(1)*1e-6");
  add("a*exp(-b*x)+0*ln(-x)");
  add("a*x^b+c");
  ModelClass* const sweep = add("a*exp(-b*x)+c");
  sweep->SpecifyICComplete = true;
  sweep->SetICRange({{1, 5, 3}, {0.1, 3, 3}, {0, 0, 1}});
  for (const auto& model : models) model->Solve = true;
  return models;
}

// What a run of fits leaves: its log, what was told, and all answers.
struct Outcome {
  std::string Log, Told;
  std::vector<std::vector<double>> Values;
  bool operator==(const Outcome&) const = default;
};

Outcome FitAll(int threads, SolveProgress& form, std::size_t points = 200) {
  const ModelCollection models = Models();
  Settings settings;
  settings.Threads = threads;
  Outcome run;
  FitEach(
      models, Decay(points), settings, run.Log, form,
      [&](const ModelClass& m, int) { run.Told += "begin " + m.id + "\n"; }, [&] { run.Told += "end\n"; });
  std::shared_ptr<const InputPoints> shared;
  for (const auto& model : models) {
    std::vector<double>& values = run.Values.emplace_back(model->CoefficientValues);
    values.insert(values.end(), model->Variances.begin(), model->Variances.end());
    values.insert(values.end(), {model->Solved ? 1.0 : 0.0, model->RSS, model->StdErr, model->Durbin,
                                 static_cast<double>(model->NumIterations)});
    for (double& value : values)
      if (std::isnan(value)) value = -1.5;  // which is not equal to itself
    if (!form.Aborted) {
      if (shared) {
        EXPECT_EQ(shared, model->CopyInputDataTo());
      }
      shared = model->CopyInputDataTo();
    }
  }
  return run;
}

TEST(ParallelFits, AreThoseOfOneThread) {
  SolveProgress nobody;
  const Outcome alone = FitAll(1, nobody);
  EXPECT_NE(alone.Log.find("Beginning LS solution"), std::string::npos);
  EXPECT_NE(alone.Log.find("9 of 9 IC's successful"), std::string::npos);
  EXPECT_NE(alone.Log.find("Solution failed"), std::string::npos);
  for (const int threads : {2, 3, 16}) {
    const Outcome run = FitAll(threads, nobody);
    EXPECT_EQ(run.Log, alone.Log) << threads;
    EXPECT_EQ(run.Told, alone.Told) << threads;
    EXPECT_EQ(run.Values, alone.Values) << threads;
  }
}

// Aborts at a given turn.
struct ImpatientForm : SolveProgress {
  int Turns = 0, AbortAt = 3;
  void Yield() override { Aborted = Aborted || ++Turns >= AbortAt; }
};

TEST(ParallelFits, LeaveAtAnAbortNoTraceOfModelsAhead) {
  SolveProgress nobody;
  const Outcome whole = FitAll(1, nobody, 2000), none = [] {
    ImpatientForm form;
    form.AbortAt = 0;
    form.Aborted = true;
    return FitAll(1, form, 2000);
  }();
  for (const int threads : {2, 16}) {
    ImpatientForm form;
    const Outcome run = FitAll(threads, form, 2000);
    std::size_t begun = 0, ended = 0;
    for (std::size_t at = 0; (at = run.Told.find("begin ", at)) != std::string::npos; ++at) ++begun;
    for (std::size_t at = 0; (at = run.Told.find("end\n", at)) != std::string::npos; ++at) ++ended;
    EXPECT_TRUE(whole.Told.starts_with(run.Told.substr(0, run.Told.rfind("end")))) << run.Told;
    EXPECT_LE(begun - ended, 1u);
    // The last one that has an account may have been broken off.
    for (std::size_t i = 0; i + 1 < ended; ++i) EXPECT_EQ(run.Values[i], whole.Values[i]) << i;
    for (std::size_t i = std::max(begun, ended); i < run.Values.size(); ++i)
      EXPECT_EQ(run.Values[i], none.Values[i]) << i;
  }
}

// Fits that end only when they are paused or aborted, by a form that does so at a turn and sees what is shown.
struct WatchingForm : SolveProgress {
  bool Pauses = false;
  int Turns = 0;
  std::vector<std::string> Shown;
  void Yield() override {
    if (++Turns < 3) return;
    if (Pauses) Paused = true;
    if (!Pauses || Turns > 500) Aborted = true;
  }
  void SetStatusLabel(const std::string& text) override { Shown.push_back(text); }
};

TEST(ParallelFits, HearOfPauseAndAbortAndShowTheOneWhoseTurnItIs) {
  for (const bool pauses : {true, false}) {
    const ModelCollection models = Models();
    SeparateFits fits;
    for (const auto& model : models)
      if (fits.Models.size() < 4) fits.Models.push_back(model.get());
    std::vector<int> ends(4, 0);
    fits.Fit = [&](std::size_t i, const Settings& own, std::string& log, SolveProgress& form) {
      EXPECT_EQ(own.Threads, 2);
      log += std::to_string(i);
      form.SetStatusLabel("fit " + std::to_string(i));
      while (!form.Paused && !form.Aborted) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        form.Yield();
      }
      ends[i] = form.Paused ? 1 : 2;
    };
    fits.Begin = fits.End = [](std::size_t) {};
    WatchingForm form;
    form.Pauses = pauses;
    Settings settings;
    settings.Threads = 8;
    std::string log;
    FitSideBySide(fits, Decay(1000), settings, log, form);
    ASSERT_FALSE(form.Shown.empty());
    EXPECT_EQ(form.Shown.front(), "fit 0");
    EXPECT_EQ(ends[0], pauses ? 1 : 2);
    EXPECT_EQ(log, pauses ? "0123" : "0");
  }
}

// What the fits note of their data, and say of them, is what one by itself does; also of values whose mean overflows.
TEST(ParallelFits, NoteOfTheirDataWhatOneAloneDoes) {
  SolveData large = Decay(1500);
  for (double& y : large.Y) y *= 1e308 / 6;
  for (const SolveData& data : {Decay(1500), large}) {
    const ModelCollection together = Models(), apart = Models();
    Settings settings;
    settings.Threads = 2;
    std::string log, logApart;
    SolveProgress nobody;
    FitEach(
        together, data, settings, log, nobody, [](const ModelClass&, int) {}, [] {});
    for (const auto& model : apart) model->Fit(data, settings, logApart, nobody);
    EXPECT_EQ(log, logApart);
    for (const auto& model : together) {
      const ModelClass &one = *model, &other = *apart.Find(model->id);
      EXPECT_EQ(*one.Input, *other.Input);
      const DataStatistics &of = one.Statistics, &alone = other.Statistics;
      EXPECT_EQ(
          std::tuple(of.InputYMin, of.YMean, of.YStd, of.X[0].XMean, of.X[0].XStd, of.X[0].XAtYMax),
          std::tuple(alone.InputYMin, alone.YMean, alone.YStd, alone.X[0].XMean, alone.X[0].XStd, alone.X[0].XAtYMax));
    }
  }
}

}  // namespace
}  // namespace quorvex
