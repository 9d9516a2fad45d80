#include "desktop/ImportCommands.h"

#include <QFileDialog>
#include <QFileInfo>

#include "desktop/quorvexWindow.h"
#include "import/spreadsheet/SpreadsheetImport.h"
#include "import/ui/frmDataBase.h"
#include "import/ui/frmImport.h"

namespace quorvex {
namespace {

// The file to import, "" where the user cancels. Begins in the folder of the last import, or else of projects.
QString ChooseDataFile(quorvexWindow& window) {
  constexpr const char* kFolder = "importdir";
  Settings& settings = window.Preferences();
  std::string folder = settings.Folder(kFolder);
  if (folder.empty()) folder = settings.Folder("projectdir");
  QString file = QFileDialog::getOpenFileName(&window, "Import", QString::fromStdString(folder),
                                              QString("Text and spreadsheets (%1);;All files (*)").arg(kDataFiles));
  if (!file.isEmpty()) settings.Set(kFolder, QFileInfo(file).absolutePath().toStdString());
  return file;
}

}  // namespace

void ImportTextOrSpreadsheet(quorvexWindow& window) {
  const QString file = ChooseDataFile(window);
  if (file.isEmpty()) return;
  window.Run([&](const SheetEdit& edit) {
    const auto import = ImportData(file.toStdString(), edit);
    return import != nullptr && ImportFile(&window, *import, edit);
  });
}

void ImportFromDatabase(quorvexWindow& window) {
  window.Run([&](const SheetEdit& edit) {
    return ConfirmOverwrite(edit) && ImportTable(&window, edit, DatabaseUse::From(window.Preferences()));
  });
}

}  // namespace quorvex
