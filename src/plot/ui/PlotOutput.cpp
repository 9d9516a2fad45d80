#include "plot/ui/PlotOutput.h"

#include <QBuffer>
#include <QMimeData>
#include <QPageSize>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <optional>

#include "core/QuietPrompter.h"
#include "core/SaveFile.h"
#include "core/ui/PdfBytes.h"
#include "core/ui/PrintJob.h"
#include "drawing/PlotText.h"
#include "drawing/SvgSurface.h"
#include "drawing/ui/QtSurface.h"
#include "plot/DescribePlot.h"
#include "plot/Metafile.h"
#include "plot/ui/Printfrm.h"

namespace quorvex {
namespace {

constexpr double kInchesPerMetre = 1 / 0.0254;

// What a file is to hold: empty where that cannot be had, and nothing where the plot could not be drawn, of which the
// user knows by then.
using Content = std::optional<std::string>;

Content PdfOf(PlotPage& plot, const PictureSize& size, Prompter& prompter) {
  constexpr int kUnitsPerInch = 1200;
  constexpr double kPointsPerInch = 72;
  QImage measures = BlankPicture(size);
  if (measures.isNull()) return "";
  QBuffer file;
  file.open(QIODevice::WriteOnly);
  {
    QPdfWriter pdf(&file);
    pdf.setResolution(kUnitsPerInch);
    pdf.setCreator("Quorvex");
    pdf.setTitle(QString::fromStdString(WithoutTextCodes(plot.PlotTitle)));
    pdf.setPageSize(QPageSize(QSizeF(size.Width, size.Height) * kPointsPerInch / size.PixelsPerInch, QPageSize::Point,
                              {}, QPageSize::ExactMatch));
    pdf.setPageMargins({});
    QtSurface surface(pdf, measures);
    if (!plot.DrawGraph(surface, prompter)) return std::nullopt;
  }
  return PdfBytes(file.buffer());
}

Content ImageOf(PlotPage& plot, const PictureSize& size, const char* format, Prompter& prompter) {
  QImage image = BlankPicture(size);
  if (image.isNull()) return "";
  {
    // In a scope of its own: the painting ends when the surface goes, and the image may be saved.
    QtSurface surface(image);
    if (!plot.DrawGraph(surface, prompter)) return std::nullopt;
  }
  QBuffer file;
  file.open(QIODevice::WriteOnly);
  return image.save(&file, format) ? file.data().toStdString() : "";
}

Content MetafileOf(PlotPage& plot, const PictureSize& size, const char* failure, Prompter& prompter) {
  QImage measures = BlankPicture(size);
  if (measures.isNull()) {
    prompter.Refuse(failure);
    return std::nullopt;
  }
  QtSurface screen(measures);
  return CreateMetafile(plot, screen, failure, prompter);
}

Content ContentOf(PictureKind kind, PlotPage& plot, const PictureSize& size, Prompter& prompter) {
  switch (kind) {
    case PictureKind::Bitmap:
      return ImageOf(plot, size, "bmp", prompter);
    case PictureKind::Metafile:
      return MetafileOf(plot, size, kMetafileNotCreated, prompter);
    case PictureKind::Svg:
      return SvgPicture(plot, size, prompter);
    case PictureKind::Pdf:
      return PdfOf(plot, size, prompter);
    case PictureKind::Png:
      return ImageOf(plot, size, "png", prompter);
  }
  return "";
}

}  // namespace

std::optional<std::string> SvgPicture(PlotPage& plot, const PictureSize& size, Prompter& prompter) {
  QImage measures = BlankPicture(size);
  if (measures.isNull()) return "";
  QtSurface screen(measures);
  SvgSurface surface(screen);
  if (!plot.DrawGraph(surface, prompter)) return std::nullopt;
  return surface.Document(WithoutTextCodes(plot.PlotTitle), DescribePlot(plot));
}

QImage BlankPicture(const PictureSize& size) {
  QImage picture(size.Width, size.Height, QImage::Format_RGB32);
  const int perMetre = qRound(size.PixelsPerInch * kInchesPerMetre);
  picture.setDotsPerMeterX(perMetre);
  picture.setDotsPerMeterY(perMetre);
  picture.fill(Qt::white);
  return picture;
}

bool SavePlotPicture(PlotPage& plot, const PictureSize& size, const std::string& file, Prompter& prompter) {
  const PictureFormat* const format = PictureFormatOf(file);
  if (format == nullptr) {
    prompter.Refuse(UnknownPicture(file));
    return false;
  }
  return SavePlotPicture(plot, *format, size, file, prompter);
}

bool SavePlotPicture(PlotPage& plot, const PictureFormat& format, const PictureSize& size, const std::string& file,
                     Prompter& prompter) {
  if (!CanBe("saved", plot, prompter)) return false;
  // A copy is drawn, since a drawing keeps the places of its boxes, which on screen are others.
  const Content content = ContentOf(format.Kind, *plot.Clone(), size, prompter);
  if (!content) return false;
  std::optional<int> error;
  if (!content->empty()) error = SaveFile(file, *content, FileCare::Answer);
  TellPicture(format, file, error, prompter);
  return error == 0;
}

std::unique_ptr<QMimeData> CopiedPicture(PlotPage& plot, const PictureSize& size, const QImage& shown) {
  auto copied = std::make_unique<QMimeData>();
  copied->setImageData(shown);
  QuietPrompter nobody;
  if (const Content svg = ContentOf(PictureKind::Svg, *plot.Clone(), size, nobody))
    copied->setData("image/svg+xml", QByteArray::fromStdString(*svg));
  return copied;
}

std::unique_ptr<QMimeData> CopiedMetafile(PlotPage& plot, const PictureSize& size, Prompter& prompter) {
  const Content metafile = MetafileOf(*plot.Clone(), size, kMetafileNotCopied, prompter);
  if (!metafile) return nullptr;
  auto copied = std::make_unique<QMimeData>();
  copied->setData("image/x-emf", QByteArray::fromStdString(*metafile));
  return copied;
}

void SetUpPlotPrinter(QPrinter& printer, const Settings& settings) {
  constexpr int kPortrait = 1;
  printer.setDocName("Quorvex");
  printer.setFullPage(true);
  printer.setPageOrientation(settings.Integer("plotorientation", "printsetup") == kPortrait ? QPageLayout::Portrait
                                                                                            : QPageLayout::Landscape);
}

bool DrawOnPaper(PlotPage& plot, QPrinter& printer, const PageSetup& page, Prompter& prompter) {
  QtSurface surface(printer, QtSurface::Device::kPrinter);
  return plot.Clone()->DrawGraph(surface, prompter, page);
}

bool PrintPlot(PlotPage& plot, QPrinter& printer, const PageSetup& page, Prompter& prompter, QWidget* parent) {
  printer.setFullPage(true);
  const QString file = printer.outputFileName();
  {
    Printfrm window(parent);
    // The job ends with the drawing; only then does the printer know of an error.
    const auto draw = [&] { return DrawOnPaper(plot, printer, page, prompter); };
    const std::string name = (file.isEmpty() ? printer.printerName() : file).toStdString();
    if (!PrintPages(1, name, window, draw, prompter)) {
      printer.abort();
      return false;
    }
  }
  const std::optional<PrinterError> error = ErrorOfLastJob(printer);
  if (error) prompter.Refuse(PlotPrinterErrorText(error->Code, error->Description));
  return !error;
}

bool AskAndPrint(PlotPage& plot, QPrinter& printer, const Settings& settings, Prompter& prompter, QWidget* parent) {
  QPrintDialog dialog(&printer, parent);
  return dialog.exec() == QDialog::Accepted && PrintPlot(plot, printer, PageSetup::Read(settings), prompter, parent);
}

void FilePrint(PlotPage& plot, const Settings& settings, Prompter& prompter, QWidget* parent) {
  if (!CanBe("printed", plot, prompter)) return;
  QPrinter printer(QPrinter::HighResolution);
  SetUpPlotPrinter(printer, settings);
  AskAndPrint(plot, printer, settings, prompter, parent);
}

}  // namespace quorvex
