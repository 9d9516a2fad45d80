#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <cstdio>
#include <filesystem>
#include <functional>

#include "Shots.h"
#include "core/ui/MessageBoxPrompter.h"
#include "import/OdbcSource.h"
#include "import/spreadsheet/SpreadsheetImport.h"
#include "import/ui/frmDataBase.h"
#include "import/ui/frmImport.h"

namespace quorvex {
namespace {

// Opens a dialog, does that in it and closes it.
void In(const std::function<void()>& open, const std::function<void(QDialog& form)>& then) {
  QTimer::singleShot(0, [&then] {
    auto* form = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (form == nullptr) return;
    then(*form);
    form->reject();
  });
  open();
}

void TakeFile(const Shots& shots, const char* file, DataSheet& sheet, const QString& name) {
  MessageBoxPrompter user(nullptr);
  const LocaleText locale;
  const SheetEdit edit{sheet, locale, user, {}, {}};
  const auto import = OpenImport(file, sheet, locale);
  if (!import) return;
  In([&] { ImportFile(nullptr, **import, edit, ForSheet::InUse); },
     [&](QDialog& form) {
       if (auto* offer = form.findChild<QPushButton*>("cmdOffer"); offer->isVisible()) offer->click();
       shots.Take(form, name);
     });
}

// A database that is gone afterwards.
void TakeDatabase(const Shots& shots) {
  const std::string file = (std::filesystem::temp_directory_path() / "lab.db").string();
  const std::string connect = "Driver=SQLite3;Database=" + file;
  std::remove(file.c_str());
  for (const char* query :
       {"CREATE TABLE runs (id INTEGER, x REAL, y REAL)", "CREATE TABLE samples (name TEXT)",
        "INSERT INTO runs VALUES (1, 0.02, 76), (2, 0.06, 97), (3, 0.11, 123), (4, 0.22, 159), (5, 0.56, 191)"})
    if (!QueryDatabase(connect + ";NoCreat=0", query)) return;
  DataSheet sheet(1, false);
  MessageBoxPrompter user(nullptr);
  const LocaleText locale;
  const SheetEdit edit{sheet, locale, user, {}, {}};
  In([&] { ImportTable(nullptr, edit, ForSheet::InUse, {}); },
     [&](QDialog& form) {
       form.findChild<QLineEdit*>("txtConnect")->setText(QString::fromStdString(connect));
       form.findChild<QPushButton*>("cmdConnect")->click();
       form.findChild<QListWidget*>("lstColumns")->setCurrentRow(1);
       for (int i = 0; i < 2; ++i) form.findChild<QPushButton*>("cmdAssign")->click();
       shots.Take(form, "import-database");
     });
  std::remove(file.c_str());
}

}  // namespace

// The imports of a text file with semicolons and decimal commas, of a spreadsheet and of a database's table.
void TakeImports(const Shots& shots) {
  DataSheet two(1, false), weighted(3, true);
  TakeFile(shots, "tests/data/pressure_decimal_comma.csv", two, "import-text");
  TakeFile(shots, "tests/data/spreadsheets/runs.ods", weighted, "import-spreadsheet");
  TakeDatabase(shots);
}

}  // namespace quorvex
