#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/Prompter.h"
#include "import/DataImport.h"
#include "sheet/SeriesData.h"

namespace quorvex {

// Which columns of a file make a series: what its dialog shows and chooses. X are as many columns as the project has
// independent variables, one beside the other; all others are proposed as Y.
class SeriesPick {
 public:
  // The import reads the file; both outlive the choice.
  SeriesPick(DataImport& import, std::size_t variables, const LocaleText& locale);

  // How it is read has changed: the columns are those that it has now, and the choice begins anew. False where it can't
  // be read, which the user is told.
  bool Reload(Prompter& user);
  // The data begin in another line, counted from 1; the names are those of the line above.
  void BeginAt(std::size_t line);

  std::size_t FirstLine() const { return firstLine_; }
  std::size_t Variables() const { return variables_; }
  DataImport& Import() { return import_; }
  const std::vector<std::string>& Columns() const { return columns_; }  // as a user reads them
  bool MayBeY(std::size_t column) const;                                // counted from 1: none of the others

  std::size_t X = 1;         // the first of its columns
  std::size_t SD = 0;        // the standard deviations of all Y; 0 for none
  std::vector<bool> IsY;     // by column
  bool TextMissing = false;  // cells that are no numbers count as missing

  // "37 cells are text: NA.", "" where there are none.
  std::string TextSentence();

  // The series; nothing where the choice is refused or the user cancels the reading.
  std::optional<SeriesData> Accept(Prompter& user);

 private:
  std::string Heading(std::size_t column) const;

  DataImport& import_;
  const std::size_t variables_;
  const LocaleText& locale_;
  GridCells cells_;  // the first lines
  std::size_t firstLine_ = 1;
  std::vector<std::string> headings_, columns_;
};

}  // namespace quorvex
