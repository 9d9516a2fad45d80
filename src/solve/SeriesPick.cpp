#include "solve/SeriesPick.h"

#include <algorithm>

#include "core/NumberText.h"

namespace quorvex {

SeriesPick::SeriesPick(DataImport& import, std::size_t variables, const LocaleText& locale)
    : import_(import), variables_(variables), locale_(locale) {
  import_.ColumnLimit = kMostSeriesColumns;
}

bool SeriesPick::Reload(Prompter& user) {
  Result<GridCells> preview = import_.Preview(&user);
  if (!preview) {
    TellFailure(preview.error(), user);
    return false;
  }
  cells_ = std::move(*preview);
  std::size_t line = import_.FirstDataLine(locale_);
  // Headings may be numbers, such as times or temperatures, beside a word over X.
  const ColumnDates dates = import_.Dates(locale_);
  const auto isHeading = [&](std::size_t row) {
    const double cell = cells_.Cell(row, 1);
    return import_.IsComment(row) || StaysText(cells_, cell, dates.LocaleOf(1));
  };
  while (line < cells_.GridLastRow() && isHeading(line)) ++line;
  X = 1;
  SD = 0;
  IsY.clear();
  BeginAt(line);
  return true;
}

void SeriesPick::BeginAt(std::size_t line) {
  firstLine_ = std::max<std::size_t>(line, 1);
  import_.ImportText = std::to_string(firstLine_);
  import_.ReadHeadings(locale_);
  const std::size_t count = import_.Columns.lstColumns().size();
  headings_.clear();
  for (std::size_t col = 1; col <= count; ++col) headings_.push_back(import_.Columns.NameOf(col));
  const bool isNamed = std::ranges::any_of(headings_, [](const std::string& heading) { return !heading.empty(); });
  for (std::size_t col = 1; !isNamed && firstLine_ > 1 && col <= count; ++col)
    if (!import_.IsComment(firstLine_ - 1)) headings_[col - 1] = cells_.GridCellText(firstLine_ - 1, col);
  columns_.clear();
  for (std::size_t col = 1; col <= count; ++col) {
    const std::string number = "Column " + std::to_string(col);
    columns_.push_back(headings_[col - 1].empty() ? number : headings_[col - 1] + " (" + number + ")");
  }
  IsY.resize(count, true);
}

bool SeriesPick::MayBeY(std::size_t column) const { return column != SD && (column < X || column >= X + variables_); }

std::string SeriesPick::TextSentence() {
  // Of the columns that are chosen; the import looks through all of them where none has a variable.
  TextCells texts;
  const ColumnDates dates = import_.Dates(locale_);
  for (std::size_t col = 1; col <= IsY.size(); ++col) {
    const bool isUsed = !MayBeY(col) || IsY[col - 1];
    for (std::size_t row = firstLine_; isUsed && row <= cells_.GridLastRow(); ++row)
      if (const double cell = cells_.Cell(row, col);
          GridCells::IsText(cell) && !import_.IsComment(row) && StaysText(cells_, cell, dates.LocaleOf(col)))
        texts.Add(cells_.TextBehind(cell));
  }
  return texts.Sentence();
}

std::optional<SeriesData> SeriesPick::Accept(Prompter& user) {
  SeriesColumns columns;
  std::vector<std::string> names;
  if (X < 1 || X + variables_ - 1 > IsY.size()) {
    user.Refuse(variables_ == 1 ? "The file has no column of X there."
                                : "The file has no " + std::to_string(variables_) + " columns of X there.");
    return std::nullopt;
  }
  if (SD >= X && SD < X + variables_) {
    user.Refuse("The standard deviations cannot be a column of X.");
    return std::nullopt;
  }
  for (std::size_t v = 0; v < variables_; ++v) columns.X.push_back(X + v);
  for (std::size_t col = 1; col <= IsY.size(); ++col) {
    if (!IsY[col - 1] || !MayBeY(col)) continue;
    columns.Y.push_back(col);
    columns.SD.push_back(SD);
    names.push_back(headings_[col - 1]);
  }
  if (columns.Y.empty()) {
    user.Refuse("Please tick at least one column of Y.");
    return std::nullopt;
  }
  import_.ckTextMissing = TextMissing;
  std::optional<Result<GridCells>> cells = import_.ReadNumbers(user, locale_);
  if (!cells) return std::nullopt;
  if (!*cells) {
    user.Refuse(cells->error());
    return std::nullopt;
  }
  return SeriesData(std::move(**cells), std::move(columns), SeriesNames(std::move(names)));
}

}  // namespace quorvex
