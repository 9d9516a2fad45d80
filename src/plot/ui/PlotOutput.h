#pragma once

#include <QImage>
#include <memory>
#include <optional>
#include <string>

#include "core/Prompter.h"
#include "plot/PageSetup.h"
#include "plot/PictureMessages.h"
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
// The same of one kind, whatever the name.
bool SavePlotPicture(PlotPage& plot, const PictureFormat& format, const PictureSize& size, const std::string& file,
                     Prompter& prompter);

// An SVG document of the plot; nothing, with a message, where it cannot be drawn.
std::optional<std::string> SvgPicture(PlotPage& plot, const PictureSize& size, Prompter& prompter);

// A picture of the plot for the clipboard: the image of it, as shown, and an SVG document.
std::unique_ptr<QMimeData> CopiedPicture(PlotPage& plot, const PictureSize& size, const QImage& shown);

// The same as a metafile; nothing, with a message, where there is none.
std::unique_ptr<QMimeData> CopiedMetafile(PlotPage& plot, const PictureSize& size, Prompter& prompter);

// Makes the printer one for plots: its whole sheet, in the orientation of the page setup.
void SetUpPlotPrinter(QPrinter& printer, const Settings& settings);

// Draws the plot on the printer's sheet, and leaves it as it is on screen. False, with a message, where it cannot be
// drawn; where the margins leave no room there is no page then.
bool DrawOnPaper(PlotPage& plot, QPrinter& printer, const PageSetup& page, Prompter& prompter);

// Prints the plot on one page while a small window says so. False, with messages, where it cannot be drawn, the user
// cancels, or the printer refuses it.
bool PrintPlot(PlotPage& plot, QPrinter& printer, const PageSetup& page, Prompter& prompter, QWidget* parent = nullptr);

// Asks which printer, and prints.
bool AskAndPrint(PlotPage& plot, QPrinter& printer, const Settings& settings, Prompter& prompter, QWidget* parent);
void FilePrint(PlotPage& plot, const Settings& settings, Prompter& prompter, QWidget* parent);

}  // namespace quorvex
