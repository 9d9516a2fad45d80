#pragma once

namespace quorvex {

class DataImport;
class quorvexWindow;

// The files that an import reads, as file dialogs take it.
inline constexpr const char* kDataFiles = "*.txt *.csv *.tsv *.dat *.ods *.xlsx";

// The Data menu's "Import Text or Spreadsheet": asks for a file, before data may be overwritten, and for its columns.
void ImportTextOrSpreadsheet(quorvexWindow& window);
// "Import from Database": the same for a table.
void ImportFromDatabase(quorvexWindow& window);

// Shows the dialog of an import that was made for the window's sheet. A fresh project takes the headings of the source
// as its own. False, and the project is as it was, where the user cancels or the import fails.
bool ImportInto(quorvexWindow& window, DataImport& import);

}  // namespace quorvex
