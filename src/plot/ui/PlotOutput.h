#pragma once

#include <QImage>
#include <memory>
#include <string>

#include "core/Prompter.h"
#include "plot/PageSetup.h"
#include "plot/PictureSize.h"
#include "plot/PlotPage.h"

class QMimeData;
class QPrinter;
class QWidget;

namespace quorvex {

// A picture with nothing on it yet.
QImage BlankPicture(const PictureSize& size);

// Writes a picture of the plot to a file, of the kind that its name ends by; PictureFormats lists them. The plot stays
// as it is, and so does an older file where this fails: false, with a message. The same plot gives the same bytes.
bool SavePlotPicture(PlotPage& plot, const PictureSize& size, const std::string& file, Prompter& prompter);

// A picture of the plot for the clipboard: the image of it, as shown, and an SVG document.
std::unique_ptr<QMimeData> CopiedPicture(PlotPage& plot, const PictureSize& size, const QImage& shown);

// Prints the plot on one page. False, with messages, where it cannot be drawn or the printer refuses it; margins that
// leave no room start no page.
bool PrintPlot(PlotPage& plot, QPrinter& printer, const PageSetup& page, Prompter& prompter);

// Asks for a printer and prints.
void FilePrint(PlotPage& plot, const Settings& settings, Prompter& prompter, QWidget* parent);

}  // namespace quorvex
