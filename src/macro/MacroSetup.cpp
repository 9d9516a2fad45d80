#include "macro/MacroSetup.h"

#include "core/Limits.h"
#include "core/NumberText.h"
#include "import/ConnectString.h"
#include "macro/MacroStatements.h"

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

std::string DataSourceText(const MacroSetup& setup) {
  return setup.SQLQuery.empty() ? setup.DataFile : MaskPassword(setup.DataFile);
}

std::string VariablesFault(const MacroSetup& setup) {
  if (setup.IndependentVariables >= 1 && setup.IndependentVariables <= kMostIndependentVariables) return {};
  return "IndependentVariables must be 1 to 20, not " + std::to_string(setup.IndependentVariables) + ".";
}

bool KeepsUnsorted(const MacroSetup& setup) {
  return EqualNoCase(setup.OutputFormat, "quorvex") || setup.UseParameterFile || !setup.PlotFile.empty() ||
         !setup.ReportFile.empty();
}

}  // namespace quorvex
