#pragma once

namespace quorvex {

class quorvexWindow;

// The Data menu's "Import Text or Spreadsheet": asks for a file, before data may be overwritten, and for its columns.
void ImportTextOrSpreadsheet(quorvexWindow& window);
// "Import from Database": the same for a table.
void ImportFromDatabase(quorvexWindow& window);

}  // namespace quorvex
