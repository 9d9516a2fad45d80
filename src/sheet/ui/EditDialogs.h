#pragma once

#include <optional>
#include <string>

#include "sheet/FindCell.h"
#include "sheet/SheetEdit.h"

class QWidget;

namespace quorvex {

class Clipboard;

// The dialogs of the Edit and the Format menu, shown over `parent`.

// Paste Special and Copy Special, which ask whether to exchange rows and columns. They return whether they changed the
// sheet.
bool ShowPasteSpecial(const SheetEdit& edit, QWidget* parent, const Clipboard& clipboard);
bool ShowCopySpecial(const SheetEdit& edit, QWidget* parent, Clipboard& clipboard);

// Asks for a number pattern and shows what it makes of `sample`. Nothing where the user cancels.
std::optional<std::string> ChooseNumberFormat(QWidget* parent, const std::string& NumberFormat, double sample,
                                              const LocaleText& locale);

// Format Cells. Returns whether it changed the sheet.
bool ShowFormatCells(const SheetEdit& edit, QWidget* parent);

// Go To: the cell that was chosen, nothing where the user cancels.
std::optional<CellPlace> ShowGoto(const DataSheet& sheet, QWidget* parent, Prompter& user);

}  // namespace quorvex
