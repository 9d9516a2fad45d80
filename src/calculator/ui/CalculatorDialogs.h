#pragma once

#include <optional>

#include "calculator/XRange.h"
#include "core/Prompter.h"
#include "core/Settings.h"
#include "plot/PlotSeries.h"

class QWidget;

namespace quorvex {

// The dialogs of the calculator, over `parent`. What is entered wrongly they refuse, and stay open. Nothing where the
// user cancels.

// Distribution: a normal curve.
std::optional<PlotSeries> ShowDistribution(QWidget* parent, const LocaleText& locale, Prompter& user);

// expsetup: a typed expression over a range.
std::optional<PlotSeries> ShowExpression(QWidget* parent, const LocaleText& locale, Prompter& user);

// frmSample: the values of a model or an interpolation.
std::optional<PlotSeries> ShowSample(QWidget* parent, const PlotSeries& equation, const Settings& settings,
                                     const LocaleText& locale, Prompter& user);

// frmSectionPlot: the X between which a curve over `whole` is kept.
std::optional<XRange> ShowSection(QWidget* parent, const XRange& whole, const LocaleText& locale, Prompter& user);

}  // namespace quorvex
