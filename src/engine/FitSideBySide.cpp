#include "engine/FitSideBySide.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <utility>

#include "core/ParallelRuns.h"

namespace quorvex {
namespace {

// What the user does with the form, as the threads hear of it.
struct Wishes {
  std::atomic<int> Pauses = 0;
  std::atomic<bool> ShowDetail = false;
};

// The form of one of the fits: it keeps the texts that the user's form is to show.
class SideForm final : public SolveProgress {
 public:
  explicit SideForm(const Wishes& wishes) : wishes_(wishes) {}

  // On the thread of the fit, before it.
  void Start(std::stop_token stop) {
    stop_ = std::move(stop);
    pauses_ = wishes_.Pauses;
    Pulse();
  }
  void Yield() override { Pulse(); }
  void Pulse() override {
    Aborted = Aborted || stop_.stop_requested();
    if (std::exchange(pauses_, wishes_.Pauses.load()) != pauses_) Paused = true;
    ShowDetail = wishes_.ShowDetail;
  }

  void ShowConverging(bool running) override { Keep(running_, running); }
  void SetStatusLabel(const std::string& text) override { Keep(status_, text); }
  void SetIterationLabel(const std::string& text) override { Keep(iteration_, text); }
  void SetResidualLabel(const std::string& text) override { Keep(residual_, text); }
  void SetDeltaLabel(const std::string& text) override { Keep(delta_, text); }
  void SetParameterLabel(int index, const std::string& text) override {
    Keep(parameters_[static_cast<std::size_t>(index - 1)], text);
  }

  // On the thread of the user's form: shows there what has changed.
  void ShowOn(SolveProgress& form) {
    const std::lock_guard lock(lock_);
    if (running_) form.ShowConverging(*std::exchange(running_, {}));
    if (status_) form.SetStatusLabel(*std::exchange(status_, {}));
    if (iteration_) form.SetIterationLabel(*std::exchange(iteration_, {}));
    if (residual_) form.SetResidualLabel(*std::exchange(residual_, {}));
    if (delta_) form.SetDeltaLabel(*std::exchange(delta_, {}));
    for (std::size_t i = 0; i < parameters_.size(); ++i)
      if (parameters_[i]) form.SetParameterLabel(static_cast<int>(i) + 1, *std::exchange(parameters_[i], {}));
  }

 private:
  template <class T>
  void Keep(std::optional<T>& kept, const T& text) {
    const std::lock_guard lock(lock_);
    kept = text;
  }

  const Wishes& wishes_;
  std::stop_token stop_;
  int pauses_ = 0;
  std::mutex lock_;
  std::optional<bool> running_;
  std::optional<std::string> status_, iteration_, residual_, delta_;
  std::array<std::optional<std::string>, kParameterLabels> parameters_;
};

// Ends a fit that has its turn.
class Ending {
 public:
  explicit Ending(const SeparateFits& fits) : fits_(fits) {}
  void operator()(std::size_t i) {
    ModelClass& model = *fits_.Models[i];
    if (shared_ != nullptr && *shared_ == *model.CopyInputDataTo())
      model.CopyInputDataFrom(shared_);
    else
      shared_ = model.CopyInputDataTo();
    fits_.End(i);
  }

 private:
  const SeparateFits& fits_;
  std::shared_ptr<const InputPoints> shared_;  // the input of the last one
};

class SideBySide {
 public:
  SideBySide(const SeparateFits& fits, const Settings& settings, std::string& log, SolveProgress& form)
      : fits_(fits), count_(fits.Models.size()), settings_(settings), log_(log), form_(form), ending_(fits) {
    wishes_.ShowDetail = form.ShowDetail;
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
      form_.Yield();
      if (std::exchange(form_.Paused, false)) ++wishes_.Pauses;
      wishes_.ShowDetail = form_.ShowDetail;
      return !form_.Aborted;
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
    explicit Own(const Wishes& wishes) : Form(wishes) {}
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
    ending_(i);
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
  Ending ending_;
  Wishes wishes_;
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
  const int threads = count < 2 || AreShort(fits, data.N(), settings) ? 1 : ThreadCount(settings.Threads);
  if (threads > 1) return SideBySide(fits, settings, log, form).Run(threads);
  Ending ending(fits);
  for (std::size_t i = 0; i < count && !form.Aborted; ++i) {
    form.Paused = false;  // was meant for the fit before, which ended by itself
    fits.Begin(i);
    if (form.Aborted) return;
    fits.Fit(i, settings, log, form);
    ending(i);
  }
}

}  // namespace quorvex
