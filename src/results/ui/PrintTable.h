#pragma once

#include <QFont>
#include <QMargins>
#include <QSizeF>
#include <QString>

#include "results/TextTable.h"

class QPagedPaintDevice;

namespace quorvex {

// Prints a table on as many pages as it takes, with the title and the page's number at the top of each and the column
// headings repeated. Letters are made smaller, to seven tenths, where that puts all columns side by side; else those
// that do not fit follow on pages of their own, beside the first column again. Long values are wrapped. Margins are in
// units of the device. False where the device does not take a page.
bool PrintTable(const TextTable& table, const QString& title, const QFont& font, QPagedPaintDevice& device,
                const QMargins& margins = {});

// The least that margins must leave of a page for a table to be read, in units of the device.
QSizeF LeastRoom(const QFont& font, QPagedPaintDevice& device);

}  // namespace quorvex
