#include "import/ui/frmImport.h"

#include "import/ui/ImportDialog.h"
#include "import/ui/ReadingControls.h"

namespace quorvex {
namespace {

class frmImport : public ImportDialog {
 public:
  frmImport(DataImport& import, const SheetEdit& edit, ForSheet sheet, QWidget* parent)
      : ImportDialog(edit, sheet, parent), reading_(import, edit.User, [this] { Reload(); }) {
    setObjectName("frmImport");
    setWindowTitle(QString::fromStdString(import.Title()));
    LayOut(reading_.Layout());
    Show(&import);
  }

 private:
  void ShowReading() override { reading_.ShowReading(); }

  ReadingControls reading_;
};

}  // namespace

bool ImportFile(QWidget* over, DataImport& import, const SheetEdit& edit, ForSheet sheet) {
  return frmImport(import, edit, sheet, over).exec() == QDialog::Accepted;
}

}  // namespace quorvex
