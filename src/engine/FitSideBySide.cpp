#include "engine/FitSideBySide.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <optional>
#include <stop_token>
#include <utility>

#include "core/ParallelRuns.h"
#include "engine/BlockTeam.h"
#include "engine/SideForm.h"

namespace quorvex {
namespace {

// As long as this lives all of the models have one table of the input between them.
class SharingInput {
 public:
  SharingInput(const std::vector<ModelClass*>& models, const SolveData& data, int threads, SolveForm& form)
      : models_(models) {
    const std::shared_ptr<ThreadTeam> team = ThreadsFor(data.N(), threads);
    std::vector<std::pair<const ModelClass*, std::shared_ptr<const FitInput>>> types;
    const auto typeOf = [&](const ModelClass& model) {
      return std::ranges::find_if(types, [&](const auto& type) { return type.first->IsOfTypeOf(model); });
    };
    // Where memory runs out none of them has the input yet, which nobody would take away again.
    for (const ModelClass* model : models)
      if (typeOf(*model) == types.end()) types.emplace_back(model, model->InputOf(data, team.get(), form));
    for (ModelClass* model : models) model->ShareInput(typeOf(*model)->second);
  }
  ~SharingInput() {
    for (ModelClass* model : models_) model->ShareInput(nullptr);
  }
  SharingInput(const SharingInput&) = delete;
  SharingInput& operator=(const SharingInput&) = delete;

 private:
  const std::vector<ModelClass*>& models_;
};

class SideBySide {
 public:
  SideBySide(const SeparateFits& fits, const Settings& settings, std::string& log, SolveProgress& form)
      : fits_(fits), count_(fits.Models.size()), settings_(settings), log_(log), form_(form), wishes_(form) {
    form.Paused = false;  // was meant for what went before
    for (std::size_t i = 0; i < count_; ++i) own_.emplace_back(wishes_);
  }

  void Run(int threads) {
    settings_.Threads = std::max(threads / static_cast<int>(count_), 1);
    OrderedTasks tasks{.Count = count_, .Ahead = count_};
    tasks.Do = [this](std::size_t i, std::stop_token stop) {
      Own& own = own_[i];
      own.SetupBefore = *fits_.Models[i];
      own.ResultBefore = *fits_.Models[i];
      own.Begun = true;
      own.Form.Start(std::move(stop));
      fits_.Fit(i, settings_, own.Log, own.Form);
    };
    tasks.Finish = [this](std::size_t i) {
      End(i);
      if (i + 1 < count_ && !form_.Aborted) Begin(i + 1);
      return !form_.Aborted;
    };
    tasks.KeepGoing = [this] {
      own_[ended_].Form.ShowOn(form_);
      return wishes_.Hear(form_);
    };
    try {
      Begin(0);
      if (form_.Aborted || RunInOrder(tasks, threads)) return;
    } catch (...) {
      UndoFrom(ended_ + 1);
      throw;
    }
    if (begun_ > ended_ && own_[ended_].Begun) End(ended_);
    UndoFrom(ended_);
  }

 private:
  struct Own {
    explicit Own(const SideWishes& wishes) : Form(wishes) {}
    SideForm Form;
    std::string Log;
    bool Begun = false;
    ModelSetup SetupBefore;
    FitResult ResultBefore;
  };

  void Begin(std::size_t i) {
    ++begun_;
    fits_.Begin(i);
  }
  void End(std::size_t i) {
    own_[i].Form.ShowOn(form_);
    log_ += std::exchange(own_[i].Log, {});
    ++ended_;
    fits_.End(i);
  }
  void UndoFrom(std::size_t first) {
    for (std::size_t i = first; i < count_; ++i) {
      if (!own_[i].Begun) continue;
      static_cast<ModelSetup&>(*fits_.Models[i]) = std::move(own_[i].SetupBefore);
      static_cast<FitResult&>(*fits_.Models[i]) = std::move(own_[i].ResultBefore);
    }
  }

  const SeparateFits& fits_;
  const std::size_t count_;
  Settings settings_;
  std::string& log_;
  SolveProgress& form_;
  SideWishes wishes_;
  std::deque<Own> own_;
  std::size_t begun_ = 0, ended_ = 0;  // of what was told
};

bool AreShort(const SeparateFits& fits, std::size_t points, const Settings& settings) {
  constexpr double kShort = 2000;  // points of fits: a third of a millisecond at least
  double starts = 0;
  for (const ModelClass* model : fits.Models) {
    double sets = 1;
    for (const ICRange& range : model->GetICRange()) sets *= range.Steps;
    starts += sets;
  }
  return !settings.TryHarder && starts * static_cast<double>(points) < kShort;
}

}  // namespace

void FitSideBySide(const SeparateFits& fits, const SolveData& data, const Settings& settings, std::string& log,
                   SolveProgress& form) {
  const std::size_t count = fits.Models.size();
  std::optional<SharingInput> sharing;
  if (count > 1) sharing.emplace(fits.Models, data, settings.Threads, form);
  if (form.Aborted) return;
  const int threads = count < 2 || AreShort(fits, data.N(), settings) ? 1 : ThreadCount(settings.Threads);
  if (threads > 1) return SideBySide(fits, settings, log, form).Run(threads);
  for (std::size_t i = 0; i < count && !form.Aborted; ++i) {
    form.Paused = false;  // was meant for the fit before, which ended by itself
    fits.Begin(i);
    if (form.Aborted) return;
    fits.Fit(i, settings, log, form);
    fits.End(i);
  }
}

}  // namespace quorvex
