#include "solve/SolveChoice.h"

namespace quorvex {

SolveChoice StoredSolveChoice(const Settings& settings) {
  SolveChoice choice;
  if (settings.Integer("defaultsolver") == 1) choice.SolveType = 1;
  if (const int models = settings.Integer("defaultsolvesetup"); models >= 0 && models <= 3)
    choice.Models = static_cast<ModelSelection>(models);
  choice.AbsoluteDeviations = settings.Flag("defaultabsolutedeviations");
  choice.TryHarder = settings.Flag("defaulttryharder");
  return choice;
}

void StoreSolveChoice(Settings& settings, const SolveChoice& choice) {
  settings.SetNumber("defaultsolver", choice.SolveType);
  settings.SetNumber("defaultsolvesetup", static_cast<int>(choice.Models));
  settings.SetFlag("defaultabsolutedeviations", choice.AbsoluteDeviations);
  settings.SetFlag("defaulttryharder", choice.TryHarder);
  settings.SetFlag("promptforsetup", false);
}

}  // namespace quorvex
