#pragma once

#include "sheet/ScaleCells.h"
#include "sheet/SheetEdit.h"
#include "sheet/ZeroData.h"

class QWidget;

namespace quorvex {

// The commands that compute new cells from what a dialog asks for, shown over `parent`. They return whether they
// changed the sheet.

bool ShowDataSweep(const SheetEdit& edit, QWidget* parent);
bool ShowFactor(const SheetEdit& edit, QWidget* parent, FactorMode mode);
bool ShowSort(const SheetEdit& edit, QWidget* parent);
bool ShowCombine(const SheetEdit& edit, QWidget* parent);
bool ShowZeroSelect(const SheetEdit& edit, QWidget* parent, ZeroSign sign);

}  // namespace quorvex
