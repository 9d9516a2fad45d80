#include "import/DataRows.h"

#include <algorithm>
#include <vector>

#include "import/TextCells.h"
#include "sheet/ColumnDates.h"
#include "sheet/DecimalCommas.h"

namespace quorvex {
namespace {

constexpr std::size_t kMostLookedAt = 5000;  // rows; no data begin below them
constexpr std::size_t kMostFacts = 10;       // lines of a name and a number above the headings

enum class Kind : char { Empty, Number, Missing, Text };

class Rows {
 public:
  Rows(const GridCells& cells, const LocaleText& locale)
      : cells_(cells), count_(std::min(cells.GridLastRow(), kMostLookedAt)), columns_(cells.GridLastCol()) {
    kinds_.resize(count_ * columns_);
    const ColumnDates dates(cells, locale);
    for (std::size_t row = 1; row <= count_; ++row)
      for (std::size_t col = 1; col <= columns_; ++col) At(row, col) = KindOf(row, col, dates.LocaleOf(col));
    for (std::size_t row = count_; row > count_ / 2; --row) {
      std::size_t width = 0;
      for (std::size_t col = 1; col <= columns_; ++col)
        if (At(row, col) != Kind::Empty) width = col;
      width_ = std::max(width_, width);
    }
    for (std::size_t col = 1; col <= columns_; ++col)
      if (HoldsNumbers(col)) numeric_.push_back(col);
  }

  std::size_t FirstData() {
    std::size_t first = 1;
    while (first <= count_ && !All(first, Kind::Number)) ++first;
    if (first > count_) first = FirstWithNumber();
    if (first > count_) return 1;
    // A few lines above one of headings are no data, whatever they hold. Of those full of numbers there is one at most,
    // which tells a size: more are data, and the line of words is a remark.
    const std::size_t most = first + (numeric_.size() > 1 ? 1 : kMostFacts);
    for (std::size_t row = first + 1; row <= std::min(most, count_) && row - first <= count_ - row; ++row) {
      if (!AreHeadings(row) || IsRepeated(row)) continue;
      std::size_t below = row + 1;
      while (below <= count_ && !HasNumber(below)) ++below;
      if (below <= count_) return below;
    }
    return WithRowsAbove(first);
  }

 private:
  Kind& At(std::size_t row, std::size_t col) { return kinds_[(row - 1) * columns_ + col - 1]; }

  Kind KindOf(std::size_t row, std::size_t col, const LocaleText& locale) const {
    const double cell = cells_.Cell(row, col);
    if (GridCells::IsEmpty(cell)) return Kind::Empty;
    if (!StaysText(cells_, cell, locale)) return Kind::Number;
    const std::string& text = cells_.TextBehind(cell);
    // "<0.5", "2.5*" and "1,5" stand for values, too.
    const bool value = text.find_first_of("<>~=+-.0123456789") == 0 && text.find_first_of("0123456789") != text.npos;
    return value || IsMissingWord(text) ? Kind::Missing : Kind::Text;
  }

  // The first of the data where some of its rows above `first` have words in them. A word in the first column is the
  // name of a fact, and in another one a remark if the headings are above.
  std::size_t WithRowsAbove(std::size_t first) {
    bool remarks = false;
    std::size_t begin = first;
    for (std::size_t row = first - 1; row >= 1; --row) {
      if (HasNumber(row) && At(row, numeric_.front()) != Kind::Text) {
        remarks = remarks || !NumbersOrMissing(row);
        begin = row;
        if (!remarks) first = row;
      } else if (!NumbersOrMissing(row)) {
        return AreHeadings(row) ? begin : first;
      }
    }
    return first;
  }

  // By the rows of the lower half, where no preamble is.
  bool HoldsNumbers(std::size_t col) {
    std::size_t numbers = 0, texts = 0;
    for (std::size_t row = count_ / 2 + 1; row <= count_; ++row) {
      numbers += At(row, col) == Kind::Number;
      texts += At(row, col) == Kind::Text;
    }
    return numbers > 0 && numbers >= texts;
  }

  bool All(std::size_t row, Kind kind) {
    return !numeric_.empty() && std::ranges::all_of(numeric_, [&](std::size_t col) { return At(row, col) == kind; });
  }
  bool HasNumber(std::size_t row) {
    return std::ranges::any_of(numeric_, [&](std::size_t col) { return At(row, col) == Kind::Number; });
  }
  bool NumbersOrMissing(std::size_t row) {
    return std::ranges::none_of(numeric_, [&](std::size_t col) { return At(row, col) == Kind::Text; }) &&
           !All(row, Kind::Empty);
  }
  std::size_t FirstWithNumber() {
    std::size_t row = 1;
    while (row <= count_ && !HasNumber(row)) ++row;
    return row;
  }

  // A text in each of several columns, no two alike.
  bool AreHeadings(std::size_t row) {
    for (std::size_t col = 1; col <= width_; ++col) {
      if (At(row, col) != Kind::Text) return false;
      for (std::size_t other = 1; other < col; ++other)
        if (cells_.GridCellText(row, other) == cells_.GridCellText(row, col)) return false;
    }
    return width_ > 1;
  }
  // As the headings of files are that were put one behind the other.
  bool IsRepeated(std::size_t row) {
    for (std::size_t above = 1; above < row; ++above) {
      bool same = true;
      for (std::size_t col = 1; same && col <= width_; ++col)
        same = cells_.GridCellText(above, col) == cells_.GridCellText(row, col);
      if (same) return true;
    }
    return false;
  }

  const GridCells& cells_;
  std::size_t count_, columns_, width_ = 0;
  std::vector<Kind> kinds_;           // row by row
  std::vector<std::size_t> numeric_;  // the columns that hold numbers
};

}  // namespace

std::size_t FirstDataRow(const GridCells& cells, const LocaleText& locale) { return Rows(cells, locale).FirstData(); }

}  // namespace quorvex
