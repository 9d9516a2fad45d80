#include "results/ui/PaperJob.h"

#include <QPrintDialog>
#include <QPrinter>

#include "core/Result.h"
#include "core/ui/BusyCursor.h"
#include "core/ui/PrintJob.h"
#include "drawing/ui/QtSurface.h"
#include "plot/PageSetup.h"
#include "plot/PrintPages.h"
#include "results/ui/PrintTable.h"

namespace quorvex {
namespace {

void SetMargins(QPrinter& printer, const PageSetup& page) {
  const double unit = page.Units == "mm" ? 1 : page.Units == "cm" ? 10 : 25.4;  // millimetres
  printer.setPageMargins(QMarginsF(page.Left, page.Top, page.Right, page.Bottom) * unit, QPageLayout::Millimeter);
}

// The margins in units of the printer, or why they leave no room for a table in that font.
Result<QMargins> MarginsOn(QPrinter& printer, const PageSetup& page, const QFont& font) {
  // The margins count from the edge of the paper, not of what the printer can reach.
  const bool fullPage = printer.fullPage();
  printer.setFullPage(true);
  const QtSurface sheet(printer, QtSurface::Device::kPrinter);
  const DeviceRect margins = ConvertMargins(page, sheet);
  const QSize least = LeastRoom(font, printer).toSize();
  const auto refusal =
      CheckMargins({margins.left, margins.top, margins.right + least.width(), margins.bottom + least.height()},
                   sheet.GetDeviceCaps(DeviceCap::PHYSICALWIDTH), sheet.GetDeviceCaps(DeviceCap::PHYSICALHEIGHT));
  printer.setFullPage(fullPage);
  if (refusal) return Failure{*refusal};
  return QMargins(margins.left, margins.top, margins.right, margins.bottom);
}

}  // namespace

void PrintOnPaper(QWidget* parent, const QFont& font, const Settings& settings, Prompter& user,
                  const std::function<void(QPrinter& printer, const QMargins& margins)>& print) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(parent->windowTitle());
  SetMargins(printer, PageSetup::Read(settings));
  QPrintDialog dialog(&printer, parent);
  if (dialog.exec() != QDialog::Accepted) return;
  const Result<QMargins> margins = MarginsOn(printer, PageSetup::Read(settings), font);
  if (!margins) return user.Refuse(margins.error());
  {
    const BusyCursor busy;
    print(printer, *margins);
  }
  if (const std::optional<PrinterError> error = ErrorOfLastJob(printer))
    user.Refuse(PrintErrorText(error->Code, error->Description));
}

}  // namespace quorvex
