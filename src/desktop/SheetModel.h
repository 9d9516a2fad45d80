#pragma once

#include <QAbstractTableModel>

#include "project/Project.h"
#include "sheet/SheetEdit.h"

namespace quorvex {

// The sheet of a project for a table view. It reads the sheet's own cells, so that a view costs nothing but what is on
// the screen. Its rows and columns are counted from 0, those of the sheet from 1.
class SheetModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  SheetModel(Project& project, const SheetEdit& edit, QObject* parent)
      : QAbstractTableModel(parent), project_(project), edit_(edit) {}

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

  // Types a text into a cell. False where the entry is refused, which the user is told.
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  // Whether a cell holds a text, which the view marks.
  bool IsText(const QModelIndex& index) const;

  // Whether setData would take the text.
  bool Accepts(const QString& text) const;

  const GridCells& Cells() const { return project_.Sheet.Cells; }

  // The width of a column beside that of a fresh one, and what the user makes of it.
  double RelativeWidth(int column) const;
  void SetRelativeWidth(int column, double width);

  // A command has changed the sheet behind the view's back: cells, headers, formats or all of them.
  void Reload();

 signals:
  void Edited();  // once for each entry, width and Reload, behind what the view is told

 private:
  Project& project_;
  const SheetEdit& edit_;
  int rows_ = 0, columns_ = 0;  // that the view knows of
};

}  // namespace quorvex
