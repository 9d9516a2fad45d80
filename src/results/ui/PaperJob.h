#pragma once

#include <QFont>
#include <QMargins>
#include <functional>

#include "core/Prompter.h"
#include "core/Settings.h"

class QPrinter;
class QWidget;

namespace quorvex {

// Asks for a printer, over `parent`, and calls `print` with it and the margins of the page setup in its units. Refused
// before a page comes out where the margins leave no room for a table in that font; what a printer says is told.
void PrintOnPaper(QWidget* parent, const QFont& font, const Settings& settings, Prompter& user,
                  const std::function<void(QPrinter& printer, const QMargins& margins)>& print);

}  // namespace quorvex
