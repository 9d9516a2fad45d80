#pragma once

#include <QImage>
#include <string>

#include "core/Prompter.h"
#include "plot/PageSetup.h"
#include "plot/PlotPage.h"

class QPrinter;
class QWidget;

namespace quorvex {

// A picture's size in pixels, and how many of them are an inch.
struct PictureSize {
  int Width = 0, Height = 0;
  double PixelsPerInch = 96;
};

// A picture with nothing on it yet.
QImage BlankPicture(const PictureSize& size);

// Writes the plot to a file, as large as on screen: by the ending of its name a PDF document, whose lines and letters
// are sharp at any size, or an image of any kind that Qt writes (PNG, BMP). False, with a message, where it fails.
bool SavePlotPicture(PlotPage& plot, const PictureSize& size, const std::string& file, Prompter& prompter);

// Prints the plot on one page. False, with messages, where it cannot be drawn or the printer refuses it; margins that
// leave no room start no page.
bool PrintPlot(PlotPage& plot, QPrinter& printer, const PageSetup& page, Prompter& prompter);

// Asks for a printer and prints.
void FilePrint(PlotPage& plot, const Settings& settings, Prompter& prompter, QWidget* parent);

}  // namespace quorvex
