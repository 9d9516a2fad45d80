#include "solve/SolveChoice.h"

#include <cmath>

#include "core/NumberText.h"

namespace quorvex {

SolveChoice StoredSolveChoice(const Settings& settings) {
  SolveChoice choice;
  if (settings.Integer("defaultsolver") == 1) choice.SolveType = 1;
  if (const int models = settings.Integer("defaultsolvesetup"); models >= 0 && models <= 3)
    choice.Models = static_cast<ModelSelection>(models);
  choice.AbsoluteDeviations = settings.Flag("defaultabsolutedeviations");
  choice.TryHarder = settings.Flag("defaulttryharder");
  if (const int loss = settings.Integer("defaultloss"); loss > 0 && loss < static_cast<int>(kLossNames.size()))
    choice.Loss = static_cast<LossKind>(loss);
  if (const double scale = settings.Number("defaultlossscale"); scale > 0 && std::isfinite(scale))
    choice.LossScale = scale;
  return choice;
}

void StoreSolveChoice(Settings& settings, const SolveChoice& choice) {
  settings.SetNumber("defaultsolver", choice.SolveType);
  settings.SetNumber("defaultsolvesetup", static_cast<int>(choice.Models));
  settings.SetFlag("defaultabsolutedeviations", choice.AbsoluteDeviations);
  settings.SetFlag("defaulttryharder", choice.TryHarder);
  settings.SetNumber("defaultloss", static_cast<int>(choice.Loss));
  settings.SetNumber("defaultlossscale", choice.LossScale);
  settings.SetFlag("promptforsetup", false);
}

Result<double> ReadLossScale(std::string_view text, char decimalSeparator) {
  if (Trim(text).empty()) return 0.0;
  const std::optional<double> scale = NumericText(text, decimalSeparator);
  if (!scale || !(*scale > 0) || !std::isfinite(*scale))
    return Failure{"The scale has to be a number above 0, or nothing to find it from the residuals."};
  return *scale;
}

}  // namespace quorvex
