#pragma once

#include <QAbstractTableModel>
#include <QTableView>
#include <functional>
#include <memory>
#include <optional>

#include "results/TextTable.h"

class QMimeData;

namespace quorvex {

// A table of texts for a view, which asks for what it shows.
class TextTableModel : public QAbstractTableModel {
 public:
  using QAbstractTableModel::QAbstractTableModel;

  void SetTable(std::unique_ptr<TextTable> table, std::unique_ptr<TextTable> inFull);
  const TextTable* Table() const { return table_.get(); }
  const TextTable* InFull() const { return inFull_ ? inFull_.get() : table_.get(); }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  void SetFont(const QFont& font) { font_ = font; }
  const QFont& Font() const { return font_; }

 private:
  std::unique_ptr<TextTable> table_, inFull_;
  QFont font_;
};

// A grid that shows a table of texts, to be looked at and copied. One cell is always current, so that keys and screen
// readers have a place to stand. Its rows are of one height, so that a long table costs no more than a short one; only
// the value of a label may take several lines.
class TableView : public QTableView {
 public:
  TableView(const char* name, const QString& accessibleName, QWidget* parent);

  // The second is the same table with all digits of its numbers, where the first has fewer: tooltips tell them.
  void SetTable(std::unique_ptr<TextTable> table, std::unique_ptr<TextTable> inFull = nullptr);
  const TextTable* Table() const { return model_->Table(); }
  // What leaves the window for another program.
  const TextTable* InFull() const { return model_->InFull(); }
  void SetTableFont(const QFont& font);
  const QFont& TableFont() const { return model_->Font(); }

  // The rectangle about the selected cells, where there are several: columns along x, rows along y.
  std::optional<QRect> SelectedArea() const;

  // What Copy takes: those cells, else the whole table, in full, as text with tabs and as HTML. The caller owns it.
  QMimeData* Copied() const;

 protected:
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  bool HasSeveralSelected() const;
  // Hands out what Copy takes.
  void WithCopied(const std::function<void(const TextTable&)>& take) const;
  void OfferCopy(const char* name, const QString& text, TableWriter writeTable);
  void Arrange();
  void MakeRoomForRemarks();
  void FitLines();

  TextTableModel* model_;
};

}  // namespace quorvex
