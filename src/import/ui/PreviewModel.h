#pragma once

#include <QAbstractTableModel>
#include <string>

#include "core/LocaleText.h"
#include "import/ColumnAssignment.h"
#include "sheet/ColumnDates.h"
#include "sheet/GridCells.h"

namespace quorvex {

// The first lines of imported data for a table view: as they are read now, dimmed what will be left out, and
// coloured what comes into the sheet as a text. A line of headers says which variable a column goes to.
class PreviewModel : public QAbstractTableModel {
 public:
  PreviewModel(const LocaleText& locale, QObject* parent) : QAbstractTableModel(parent), locale_(locale) {}

  // `comments` says which lines, from the first on, will be left out as such.
  void Show(GridCells cells, std::vector<bool> comments = {});
  // What will be imported: the lines from `startRow` on, but no cell with the text `marker`, and no text at all where
  // those are left out; `dates` tells which texts are dates.
  void SetKept(double startRow, std::string marker, bool textMissing, ColumnDates dates);
  void ShowVariables(const ColumnAssignment& columns);

  // One cell at least, since a view without any has no place to stand.
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  bool IsComment(std::size_t row) const { return row <= comments_.size() && comments_[row - 1]; }
  bool Kept(std::size_t row, std::size_t col) const;
  bool StaysText(std::size_t row, std::size_t col) const;

  const LocaleText& locale_;
  ColumnDates dates_;
  GridCells cells_;
  std::vector<bool> comments_;
  std::vector<std::string> names_, variables_;  // by column
  double startRow_ = 1;
  std::string marker_;
  bool textMissing_ = false;
  std::vector<bool> imported_;  // by column
};

}  // namespace quorvex
