#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/Result.h"
#include "sheet/GridCells.h"
#include "sheet/LoadGridData.h"

namespace quorvex {

// Which columns of a source make a series, counted from 1.
struct SeriesColumns {
  std::vector<std::size_t> X;
  std::vector<std::size_t> Y;
  std::vector<std::size_t> SD;  // the standard deviations of each Y; 0 for none
};

// Which they are by a `columnOrder`, as ArrangeData takes it, of a source with `count` columns. Each "y" is a column of
// the series, and so is every column behind the list where its last word is "y". An "sd" belongs to the "y" in front of
// it, and to all that have none of their own where it stands in front of the first. "default" is X, the standard
// deviations of all where `weighted`, and then Y alone. Fails with a sentence where X or Y are missing.
Result<SeriesColumns> ColumnsOfSeries(std::string_view columnOrder, std::size_t independentVariables, bool weighted,
                                      std::size_t count, char listSeparator);

// Names by which all columns of a series can be told apart, in file names too: a blank one is the number of its column
// in the series, and one that comes again has "_2", "_3" and so on behind it. '/', '\' and control characters of a file
// name are '_'.
std::vector<std::string> SeriesNames(std::vector<std::string> headings);
std::string SeriesFileName(std::string_view name);

// Many Y over the same X: the wells of a plate, the spectra of a time course. X is read and put in order once; a column
// then has the points that it would have beside X alone, to the bit.
class SeriesData {
 public:
  SeriesData() = default;
  // `names` has one for each Y.
  SeriesData(GridCells cells, SeriesColumns columns, std::vector<std::string> names);

  std::size_t Size() const { return names_.size(); }
  const std::vector<std::string>& Names() const { return names_; }
  std::size_t Rows() const { return rows_; }
  std::size_t IndependentVariables() const { return x_.size(); }

  // The points of column i, from 0: of the rows in which it and all X are there. Fails as LoadGridData does where one
  // of its cells is a text, and names the column.
  Result<LoadedGrid> Points(std::size_t i, bool keepUnsorted = false) const;

 private:
  bool HasTexts(const std::vector<double>& column) const;
  GridCells OneOf(std::size_t i) const;

  GridCells cells_;  // less the columns below; knows the texts that these stand for
  std::vector<std::vector<double>> x_, y_, sd_;
  std::vector<std::size_t> sdOf_;  // place in sd_, from 1; 0 for none
  std::vector<std::string> names_;
  std::size_t rows_ = 0;
  std::vector<std::size_t> order_;           // the rows with all X, in ascending order of a single one
  std::vector<std::vector<double>> sorted_;  // X of these rows
  bool xHasTexts_ = false;
};

}  // namespace quorvex
