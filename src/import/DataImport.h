#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/Limits.h"
#include "core/Result.h"
#include "import/ColumnAssignment.h"
#include "import/DataRows.h"
#include "import/TextCells.h"
#include "import/TextLines.h"
#include "sheet/ColumnDates.h"
#include "sheet/GridCells.h"
#include "sheet/SheetEdit.h"

namespace quorvex {

// What an import dialog does after its Finish button.
enum class ImportOutcome {
  Imported,         // closes, the sheet has the data
  Stay,             // stays open
  CorrectStartRow,  // stays open, the input goes to the start row
  Failed            // closes, the sheet is as it was
};

// Asked before each import command, where the sheet holds anything.
bool ConfirmOverwrite(const SheetEdit& edit);

// Gives a sheet what was imported into another one of its kind, as one step to undo.
void TakeImported(DataSheet imported, const SheetEdit& edit);

// Tells why an import came to nothing. The failure is empty where the user cancelled, who then hears nothing.
void TellFailure(const std::string& failure, Prompter& user);

// The names of files that hold data, as a file dialog takes them.
inline constexpr const char* kDataFiles = "*.txt *.csv *.tsv *.dat *.ods *.xlsx";

// What is to be said about dates that may be read either way: "Nothing in column 'Day' tells day from month in
// 03/04/2026.", "" where there are none, and whether the day is read first.
struct DateOrderQuestion {
  std::string Sentence;
  bool DayFirst = false;
};

// An import in progress: what its dialog shows and decides. The fields are those of the dialog's controls.
class DataImport {
 public:
  static constexpr std::size_t kPreviewLines = 200;

  virtual ~DataImport() = default;

  ColumnAssignment Columns;
  bool ckMissingData = false;
  std::string txtMissingData;                  // cells with this text are left empty, where ckMissingData is ticked
  std::string ImportText = "1";                // the first data line, counted from 1
  bool ckHeadings = false;                     // the variables are named after the headings of their columns
  bool ckTextMissing = false;                  // cells that are no numbers are left empty
  std::optional<bool> ckDayFirst;              // of dates that may be read either way; nothing: as the locale expects
  bool ckComments = true;                      // lines of comments are left out
  std::size_t ColumnLimit = kMostColumnsRead;  // columns behind it are not kept

  // "Preview of 'runs.txt' (first 200 lines)".
  std::string Title() const;
  // How many lines the source has, the limit of the start row; nothing where that is not known.
  virtual std::optional<std::size_t> LineCount() const = 0;

  // The first 200 lines as they are read now, marked cells included and comments in one cell each; Columns offers the
  // columns they have. To be called at first and after each change of how the source is read. Fails with the message of
  // it, which is empty where the user, who waits for it, cancelled.
  Result<GridCells> Preview(Prompter* user = nullptr);

  // The cells of the chosen columns that would come into the sheet as texts: of all lines that the sheet has room for,
  // or of a preview's where the source isn't at hand.
  TextCells TextsToImport(const LocaleText& locale) const;

  // How the columns write their dates.
  ColumnDates Dates(const LocaleText& locale) const { return Dates(cells_, locale); }
  DateOrderQuestion AskDateOrder(const LocaleText& locale) const;

  // Names the columns as the source does, or else after the headings: the line above the data, where that has words and
  // no number, or a comment above them with a word for each column. Blank lines between don't matter, and a line of
  // units is put behind the names.
  void ReadHeadings(const LocaleText& locale);

  // Where the data begins in what Preview has read, counted from 1.
  std::size_t FirstDataLine(const LocaleText& locale) const { return FirstDataRow(cells_, locale); }

  // Whether a line of the preview is a comment that is left out.
  bool IsComment(std::size_t line) const { return ckComments && CommentAt(line) != nullptr; }
  std::size_t CommentCount() const { return Comments.size(); }
  // "3 lines are comments: # made in May."
  std::string CommentSentence() const;

  // Another way to read the source, which fits it better than the present one: what shows that, and the command that
  // takes it.
  struct OtherReading {
    std::string Notice, Command;
  };
  virtual std::optional<OtherReading> Offer(const LocaleText&) const { return std::nullopt; }
  virtual void TakeOffer(const LocaleText&) {}

  // The line that ImportText asks for, 1 where that is not numeric.
  double StartRow(const LocaleText& locale) const;

  // Checks what was chosen and, where nothing speaks against it, brings the data into the sheet: its first line to row
  // 1, the assigned columns replaced, the others as they were. A text that a typed cell would take is the value that
  // the cell would have; dates are in the order that their column tells, and a column of them is shown as dates. Says
  // what is wrong and whether rows are left out. While the source is read the user can cancel, which changes nothing
  // and stays. At last it tells which cells have come in as texts.
  ImportOutcome Finish(const SheetEdit& edit);

  // All cells from the first data line on, less the lines of comments, for a use of their own: texts that a typed cell
  // would take are numbers, and the others stay, or are empty with ckTextMissing. Nothing where the user cancels.
  std::optional<Result<GridCells>> ReadNumbers(Prompter& user, const LocaleText& locale) const;

 protected:
  // To read numbers with decimal commas, of which this is one; nothing where there is none.
  static std::optional<OtherReading> DecimalCommaOffer(const std::string& example);

  DataImport(std::string source, const DataSheet& sheet) : Columns(sheet), Source(std::move(source)) {}

  // What reads at most `count` rows of the source, row 1 being its line `first`. Cells with the marker are empty. It
  // may run beside the window and outlive this import, so it holds all that it needs.
  using Reading = std::function<Result<GridCells>(const LongWork&)>;
  virtual Reading ReadRows(std::size_t first, std::size_t count, const std::string& marker) const = 0;
  virtual std::string IncompleteQuestion() const;
  // The cells of a comment, as they would be without its sign.
  virtual std::vector<std::string> CommentCells(const CommentLine&) const { return {}; }

  std::string ReadingText() const { return "Reading '" + Source + "'"; }

  const std::string Source;           // as messages name it
  std::vector<CommentLine> Comments;  // of a text, in their order

 private:
  std::string Marker() const;
  void LeaveCommentsOut(GridCells& rows, std::size_t first) const;
  const CommentLine* CommentAt(std::size_t line) const;  // nullptr for none
  std::size_t DataColumns() const;                       // the lines above the data may have more
  bool IsBlank(std::size_t line) const;
  ColumnDates Dates(const GridCells& cells, const LocaleText& locale) const;
  std::vector<std::string> Headings(const LocaleText& locale) const;
  // Those that a line of these cells may have been written for; none where one of them is a number.
  std::vector<std::string> HeadingsIn(std::size_t line, const LocaleText& locale, const ColumnDates& dates) const;
  // Names the variables after the columns they have, where those have a name.
  void NameVariables(DataSheet& sheet) const;
  // Makes numbers of the texts that are typed ones, and of the others empty cells where those are to be left out.
  // Returns the patterns of the variables that are dates.
  ColumnPatterns ReadTexts(GridCells& rows, std::size_t count, const LocaleText& locale) const;
  // "" where all cells of the first rows, which have come in, are numbers.
  std::string TextSummary(const DataSheet& sheet, std::size_t rows) const;

  GridCells cells_;  // as Preview has read them, and behind those as many lines as are at hand
};

}  // namespace quorvex
