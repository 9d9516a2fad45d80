#include "desktop/ImportCommands.h"

#include <QFileInfo>
#include <functional>
#include <utility>

#include "core/ui/ChooseFiles.h"
#include "desktop/quorvexWindow.h"
#include "import/spreadsheet/SpreadsheetImport.h"
#include "import/ui/frmDataBase.h"
#include "import/ui/frmImport.h"
#include "project/ChangeColumns.h"

namespace quorvex {

QString ChooseDataFile(quorvexWindow& window, const QString& title) {
  constexpr const char* kFolder = "importdir";
  Settings& settings = window.Preferences();
  std::string folder = settings.Folder(kFolder);
  if (folder.empty()) folder = settings.Folder("projectdir");
  const std::optional<QString> file =
      ChooseFile(&window, title, QString::fromStdString(folder),
                 QString("Text and spreadsheets (%1);;All files (*)").arg(kDataFiles), window.User());
  if (file) settings.Set(kFolder, QFileInfo(*file).absolutePath().toStdString());
  return file.value_or(QString());
}

namespace {

// Lets `show` fill the sheet. An empty one may become one of another kind on the way: a fresh project gives way to
// another fresh one, and that of any other project gets the columns in the same step.
bool Import(quorvexWindow& window, const SheetEdit& edit,
            const std::function<bool(const SheetEdit& edit, ForSheet sheet)>& show) {
  if (edit.Sheet.Cells.GridLastRow() > 0) return show(edit, ForSheet::InUse);
  DataSheet sheet = edit.Sheet;
  const auto withoutUndo = [&](DataSheet& target) {
    return SheetEdit{target, edit.Locale, edit.User, {}, [](const UndoLabel&, const CellRange&) {}};
  };
  if (!show(withoutUndo(sheet), ForSheet::NewOfKind)) return false;
  const ProjectKind kind{sheet.IndependentVariables, sheet.HasStandardDeviation};
  if (kind == ProjectKind{edit.Sheet.IndependentVariables, edit.Sheet.HasStandardDeviation}) {
    TakeImported(std::move(sheet), edit);
    return true;
  }
  if (window.Document().IsFresh()) {
    emit window.ImportedAsOtherKind(sheet);
    return false;
  }
  if (!ChangeColumns(window.Document(), edit, kind, {UndoOperation::ChangeColumns, "and Import"})) return false;
  TakeImported(std::move(sheet), withoutUndo(edit.Sheet));
  return true;
}

}  // namespace

void ImportTextOrSpreadsheet(quorvexWindow& window) {
  const QString file = ChooseDataFile(window, "Import");
  if (file.isEmpty()) return;
  window.Run([&](const SheetEdit& edit) {
    const auto import = ImportData(file.toStdString(), edit);
    if (import == nullptr) return false;
    return Import(window, edit,
                  [&](const SheetEdit& into, ForSheet sheet) { return ImportFile(&window, *import, into, sheet); });
  });
}

void ImportFromDatabase(quorvexWindow& window) {
  window.Run([&](const SheetEdit& edit) {
    return ConfirmOverwrite(edit) && Import(window, edit, [&](const SheetEdit& into, ForSheet sheet) {
             return ImportTable(&window, into, sheet, DatabaseUse::From(window.Preferences()));
           });
  });
}

}  // namespace quorvex
