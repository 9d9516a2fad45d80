#pragma once

#include <cstddef>
#include <string>

namespace quorvex {

// What a fit tells about its progress, and where it hears of the user's wish to stop. The progress windows implement
// it; a run without windows uses it as it stands: nobody looks, nobody presses a button.
class SolveForm {
 public:
  virtual ~SolveForm() = default;

  // Raised by the form's buttons; a fit looks at them once per iteration, and at the first also within a long one.
  bool Aborted = false;
  bool Paused = false;
  bool ShowDetail = false;  // the labels of the parameters are wanted

  // Gives the event loop its turn, once per iteration.
  virtual void Yield() {}
  // Called every few points, so that a form can yield within an iteration that takes long.
  virtual void Pulse() {}

  // How far a piece of work is that takes many fits, and what it is: "Bootstrap of a*x+b".
  virtual void ShowWork(const std::string& /*what*/, std::size_t /*done*/, std::size_t /*of*/) {}

  // ConvergeLabel and cmdPause are shown, and cmdDetail enabled, while a nonlinear search runs.
  virtual void ShowConverging(bool /*running*/) {}

  virtual void SetIterationLabel(const std::string& /*text*/) {}
  virtual void SetResidualLabel(const std::string& /*text*/) {}
  virtual void SetDeltaLabel(const std::string& /*text*/) {}
  virtual void SetParameterLabel(int /*index from 1 to 20*/, const std::string& /*text*/) {}
};

inline constexpr int kParameterLabels = 20;

}  // namespace quorvex
