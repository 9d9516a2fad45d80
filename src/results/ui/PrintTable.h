#pragma once

#include <QFont>
#include <QString>

#include "results/TextTable.h"

class QPagedPaintDevice;

namespace quorvex {

// Prints a table on as many pages as it takes, with the title and the page's number at the top of each and the column
// headings repeated. Columns that do not fit beside the others follow on pages of their own. False where the device
// does not take a page.
bool PrintTable(const TextTable& table, const QString& title, const QFont& font, QPagedPaintDevice& device);

}  // namespace quorvex
