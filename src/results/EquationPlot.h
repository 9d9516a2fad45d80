#pragma once

#include <array>
#include <memory>
#include <string>

#include "core/LocaleText.h"
#include "core/Result.h"
#include "core/Settings.h"
#include "plot/PlotPage.h"

namespace quorvex {

// A plot of an equation without coefficients: a curve over X, or a surface over X1 and X2. The fields are the dialog's,
// texts as typed in the user's locale.
struct EquationPlot {
  struct Range {
    std::string Min, Max, Divisions;  // the last one counts points
  };
  bool ThreeD = false;
  std::string Txt2D, Txt3D;
  Range X;                     // of the curve
  std::array<Range, 2> Plane;  // X1 and X2 of the surface

  // Fails with what is wrong with the texts of that kind, the equation first.
  Result<std::unique_ptr<PlotPage>> Make(const Settings& settings, const LocaleText& locale) const;
};

}  // namespace quorvex
