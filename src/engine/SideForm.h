#pragma once

#include <array>
#include <atomic>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>

#include "engine/SolveProgress.h"

namespace quorvex {

// What the user does with the form of fits that are side by side, as their threads hear of it.
class SideWishes {
 public:
  explicit SideWishes(const SolveForm& form) : showDetail_(form.ShowDetail) {}

  // On the thread of the user's form: gives it a turn. A pause is meant for all that are under way. False where it is
  // aborted.
  bool Hear(SolveForm& form);

 private:
  friend class SideForm;
  std::atomic<int> pauses_ = 0;
  std::atomic<bool> showDetail_;
};

// The form of one of these fits: it keeps the texts that the user's form is to show.
class SideForm final : public SolveProgress {
 public:
  explicit SideForm(const SideWishes& wishes) : wishes_(wishes) {}

  // On the thread of the fit, before it.
  void Start(std::stop_token stop);
  void Yield() override { Pulse(); }
  void Pulse() override;

  void ShowConverging(bool running) override { Keep(running_, running); }
  void SetStatusLabel(const std::string& text) override { Keep(status_, text); }
  void SetParameterCount(int count) override;
  void SetIterationLabel(const std::string& text) override { Keep(iteration_, text); }
  void SetResidualLabel(const std::string& text) override { Keep(residual_, text); }
  void SetDeltaLabel(const std::string& text) override { Keep(delta_, text); }
  void SetParameterLabel(int index, const std::string& text) override {
    Keep(parameters_[static_cast<std::size_t>(index - 1)], text);
  }

  // On the thread of the user's form: shows there what has changed; status and count of parameters only
  // where the form has these.
  void ShowOn(SolveForm& form);
  void ShowOn(SolveProgress& form);

 private:
  template <class T>
  void Keep(std::optional<T>& kept, const T& text) {
    const std::lock_guard lock(lock_);
    kept = text;
  }

  const SideWishes& wishes_;
  std::stop_token stop_;
  int pauses_ = 0;
  std::mutex lock_;
  std::optional<bool> running_;
  std::optional<int> count_;
  std::optional<std::string> status_, iteration_, residual_, delta_;
  std::array<std::optional<std::string>, kParameterLabels> parameters_;
};

}  // namespace quorvex
