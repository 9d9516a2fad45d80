#include "engine/SideForm.h"

#include <utility>

namespace quorvex {

bool SideWishes::Hear(SolveForm& form) {
  form.Yield();
  if (std::exchange(form.Paused, false)) ++pauses_;
  showDetail_ = form.ShowDetail;
  return !form.Aborted;
}

void SideForm::Start(std::stop_token stop) {
  stop_ = std::move(stop);
  pauses_ = wishes_.pauses_;
  Pulse();
}

void SideForm::Pulse() {
  Aborted = Aborted || stop_.stop_requested();
  if (std::exchange(pauses_, wishes_.pauses_.load()) != pauses_) Paused = true;
  ShowDetail = wishes_.showDetail_;
}

// It clears their labels.
void SideForm::SetParameterCount(int count) {
  const std::lock_guard lock(lock_);
  count_ = count;
  parameters_ = {};
}

void SideForm::ShowOn(SolveForm& form) {
  const std::lock_guard lock(lock_);
  if (running_) form.ShowConverging(*std::exchange(running_, {}));
  if (iteration_) form.SetIterationLabel(*std::exchange(iteration_, {}));
  if (residual_) form.SetResidualLabel(*std::exchange(residual_, {}));
  if (delta_) form.SetDeltaLabel(*std::exchange(delta_, {}));
  for (std::size_t i = 0; i < parameters_.size(); ++i)
    if (parameters_[i]) form.SetParameterLabel(static_cast<int>(i) + 1, *std::exchange(parameters_[i], {}));
}

void SideForm::ShowOn(SolveProgress& form) {
  {
    const std::lock_guard lock(lock_);
    if (status_) form.SetStatusLabel(*std::exchange(status_, {}));
    if (count_) form.SetParameterCount(*std::exchange(count_, {}));
  }
  ShowOn(static_cast<SolveForm&>(form));
}

}  // namespace quorvex
