#pragma once

#include "core/LocaleText.h"
#include "core/Result.h"
#include "core/Settings.h"
#include "diagnosis/Diagnosis.h"
#include "engine/SolveForm.h"
#include "plot/PlotClass.h"

namespace quorvex {

// The rise of the merit function beside a solution, in units of the variance, against the value of one coefficient with
// the others fitted anew; beside it the parabola that the symmetric limits take it for, a level line for each level of
// the limits, and the limits as markers. A side is shown to a tenth beyond its farthest limit, those of the parabola
// among them; one with limits that don't exist or are more than ten times as far as the parabola's, to twice its
// farthest other. Fails for a coefficient without a profile. Ready for CreateGraph({.Auto = true, .Regenerate = true,
// .AutoFormat = true}).
Result<PlotClass> ProfilePlot(const CoefficientDiagnosis& coefficient, const Settings& settings,
                              const LocaleText& locale = {});

// The same of all free coefficients of a solved model, which is profiled for it. Each is in standard errors from its
// best value, so that all have one parabola. Fails with the reason where there are no profiles, or the form is aborted.
Result<PlotClass> ProfilesPlot(const ModelClass& model, const SolveData& data, const Settings& settings,
                               const LocaleText& locale, SolveForm& form);

}  // namespace quorvex
