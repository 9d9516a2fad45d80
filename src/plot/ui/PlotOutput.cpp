#include "plot/ui/PlotOutput.h"

#include <QFileInfo>
#include <QPageSize>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QSaveFile>

#include "core/ui/PrintJob.h"
#include "drawing/ui/QtSurface.h"
#include "plot/PictureMessages.h"

namespace quorvex {
namespace {

constexpr double kInchesPerMetre = 1 / 0.0254;

bool WritePdf(PlotPage& plot, const PictureSize& size, QIODevice& file, Prompter& prompter) {
  constexpr int kUnitsPerInch = 1200;
  constexpr double kPointsPerInch = 72;
  QPdfWriter pdf(&file);
  pdf.setResolution(kUnitsPerInch);
  pdf.setCreator("Quorvex");
  pdf.setTitle(QString::fromStdString(plot.PlotTitle));
  pdf.setPageSize(QPageSize(QSizeF(size.Width, size.Height) * kPointsPerInch / size.PixelsPerInch, QPageSize::Point, {},
                            QPageSize::ExactMatch));
  pdf.setPageMargins({});
  QtSurface surface(pdf);
  return plot.DrawGraph(surface, prompter);
}

bool WriteImage(PlotPage& plot, const PictureSize& size, QIODevice& file, const QByteArray& format,
                Prompter& prompter) {
  QImage image = BlankPicture(size);
  {
    // In a scope of its own: the painting ends when the surface goes, and the image may be saved.
    QtSurface surface(image);
    if (!plot.DrawGraph(surface, prompter)) return false;
  }
  return image.save(&file, format.constData());
}

}  // namespace

QImage BlankPicture(const PictureSize& size) {
  QImage picture(size.Width, size.Height, QImage::Format_RGB32);
  const int perMetre = qRound(size.PixelsPerInch * kInchesPerMetre);
  picture.setDotsPerMeterX(perMetre);
  picture.setDotsPerMeterY(perMetre);
  picture.fill(Qt::white);
  return picture;
}

bool SavePlotPicture(PlotPage& plot, const PictureSize& size, const std::string& name, Prompter& prompter) {
  if (!CanBe("saved", plot, prompter)) return false;
  const QByteArray format = QFileInfo(QString::fromStdString(name)).suffix().toLower().toUtf8();
  const bool pdf = format == "pdf";
  QSaveFile file(QString::fromStdString(name));  // an older picture stays where the new one fails
  const bool written = file.open(QIODevice::WriteOnly) &&
                       (pdf ? WritePdf(plot, size, file, prompter) : WriteImage(plot, size, file, format, prompter)) &&
                       file.commit();
  TellPicture(pdf ? PictureKind::Pdf : PictureKind::Bitmap, name, written, prompter);
  return written;
}

bool PrintPlot(PlotPage& plot, QPrinter& printer, const PageSetup& page, Prompter& prompter) {
  printer.setFullPage(true);
  {
    // The job ends with the surface; only then does the printer know of an error.
    QtSurface surface(printer, QtSurface::Device::kPrinter);
    if (!plot.DrawGraph(surface, prompter, page)) {
      printer.abort();
      prompter.Refuse("An error ocurred drawing the plot to the printer.");
      return false;
    }
  }
  const std::optional<PrinterError> error = ErrorOfLastJob(printer);
  if (error)
    prompter.Refuse("The following printer error occurred: Error number " + std::to_string(error->Code) + ": " +
                    error->Description + ".");
  return !error;
}

void FilePrint(PlotPage& plot, const Settings& settings, Prompter& prompter, QWidget* parent) {
  if (!CanBe("printed", plot, prompter)) return;
  constexpr int kPortrait = 1;
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName("Quorvex");
  printer.setPageOrientation(settings.Integer("plotorientation", "printsetup") == kPortrait ? QPageLayout::Portrait
                                                                                            : QPageLayout::Landscape);
  QPrintDialog dialog(&printer, parent);
  if (dialog.exec() == QDialog::Accepted) PrintPlot(plot, printer, PageSetup::Read(settings), prompter);
}

}  // namespace quorvex
