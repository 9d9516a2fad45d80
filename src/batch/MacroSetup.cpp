#include "batch/MacroSetup.h"

#include "batch/MacroStatements.h"

namespace quorvex {
namespace {

// Has `take` take the field of the setup and that of the preferences for each statement about the solver.
template <typename Take>
void ForEachLimit(const Take& take) {
  const auto visitor = [&](const auto& value) {
    if constexpr (requires { value.Preference; }) take(value.Read, value.Preference);
  };
  for (const MacroStatement& statement : MacroStatements()) std::visit(visitor, statement.Value);
}

}  // namespace

void InitMacroSetup(MacroSetup& setup, const Settings& preferences) {
  setup = MacroSetup();
  ForEachLimit([&](auto read, auto preference) { setup.*read = preferences.*preference; });
}

void TakeLimits(const MacroSetup& setup, Settings& preferences) {
  preferences.TryHarder = setup.TryHarder;
  preferences.AbsoluteDeviations = setup.AbsoluteDeviations;
  preferences.Loss = setup.Loss;
  preferences.LossScale = setup.LossScale;
  if (setup.Threads > 0) preferences.Threads = setup.Threads;
  ForEachLimit([&](auto read, auto preference) { preferences.*preference = setup.*read; });
}

}  // namespace quorvex
