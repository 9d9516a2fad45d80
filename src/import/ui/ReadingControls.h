#pragma once

#include <QLayout>
#include <functional>
#include <utility>
#include <vector>

#include "core/Prompter.h"
#include "import/DataImport.h"

class QCheckBox;

namespace quorvex {

class SpreadsheetImport;
class TextImport;

// The controls by which a file is read: what separates the columns of a text, or which sheet of a spreadsheet. They
// belong to a dialog; what the user chooses stands in the import at once.
class ReadingControls {
 public:
  // All of it outlives the controls; `reload` is called after each change.
  ReadingControls(DataImport& import, Prompter& user, std::function<void()> reload);

  // For the dialog to take, once.
  QLayout* Layout() const { return layout_; }
  // Somebody else has changed how the file is read.
  void ShowReading();

 private:
  QLayout* Delimiters(TextImport& import);
  QLayout* Sheets(SpreadsheetImport& import);

  Prompter& user_;
  std::function<void()> reload_;
  QLayout* layout_ = nullptr;
  std::vector<std::pair<QCheckBox*, const bool*>> boxes_;  // with what they stand for
};

}  // namespace quorvex
