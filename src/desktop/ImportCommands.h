#pragma once

#include <QString>

namespace quorvex {

class quorvexWindow;

// The file to import, "" where the user cancels. Begins in the folder of the last import, or else of projects.
QString ChooseDataFile(quorvexWindow& window, const QString& title);

// The Data menu's "Import Text or Spreadsheet": asks for a file, before data may be overwritten, and for its columns.
void ImportTextOrSpreadsheet(quorvexWindow& window);
// "Import from Database": the same for a table.
void ImportFromDatabase(quorvexWindow& window);

}  // namespace quorvex
