#include "project/clsUndoItem.h"

#include <algorithm>

#include "engine/LoadModelCatalog.h"
#include "engine/UserModel.h"

namespace quorvex {

clsUndoItem clsUndoItem::Opposite(const DataSheet& grid, const ModelCollection& regressionList,
                                  const std::vector<InterpClass>& interpolationList) const {
  // Rows that come back go again, and the other way about.
  const UndoExtent extent = extent_ == UndoExtent::DeletedRows    ? UndoExtent::InsertedRows
                            : extent_ == UndoExtent::InsertedRows ? UndoExtent::DeletedRows
                                                                  : extent_;
  clsUndoItem opposite(EventString, extent, hasPatterns_);
  opposite.Copy(grid, range_, regressionList, interpolationList);
  return opposite;
}

bool clsUndoItem::HasHeaders() const {
  return extent_ == UndoExtent::Headers || extent_ == UndoExtent::HeadersAndCells || extent_ == UndoExtent::Import;
}

void clsUndoItem::Copy(const DataSheet& grid, const CellRange& range, const ModelCollection& regressionList,
                       const std::vector<InterpClass>& interpolationList) {
  if (extent_ == UndoExtent::Formats) CopyFormat(grid);
  if (HasHeaders()) CopyHeaders(grid);
  if (HasPatterns()) CopyPatterns(grid);
  if (!HasData()) return;
  CopyData(grid, range);
  if (extent_ == UndoExtent::Columns) {
    for (const auto& model : regressionList)
      if (model->UserType) userModels_.push_back(model->CopyTo());
  }
  CopyRegression(regressionList);
  CopyInterpolation(interpolationList);
}

void clsUndoItem::CopyPatterns(const DataSheet& grid) {
  for (const ColumnFormat& format : grid.Formats) patterns_.push_back(format.NumberFormat);
}

void clsUndoItem::RecoverPatterns(DataSheet& grid) const {
  for (std::size_t i = 0; i < std::min(patterns_.size(), grid.Formats.size()); ++i)
    grid.Formats[i].NumberFormat = patterns_[i];
}

void clsUndoItem::CopyInterpolation(const std::vector<InterpClass>& interpolationList) {
  for (const InterpClass& interpolation : interpolationList)
    if (interpolation.Solved) interpolations_.push_back(interpolation);
}

void clsUndoItem::CopyRegression(const ModelCollection& regressionList) {
  for (const auto& model : regressionList)
    if (model->Solved) regressions_.push_back(model->CopyTo());
}

std::size_t clsUndoItem::RecoverRegression(ModelCollection& regressionList) const {
  for (const auto& model : regressionList) model->Solved = false;
  std::size_t lost = 0;
  for (const auto& saved : regressions_) {
    ModelClass* const model = regressionList.Find(saved->id);
    // The fit of a model belongs to its text: where that is another, so are the coefficients.
    if (model && SameDefinition(*saved, *model)) {
      // Into the model that is there, since windows look at it.
      saved->CopyFitTo(*model);
    } else {
      ++lost;
    }
  }
  return lost;
}

void clsUndoItem::RecoverInterpolation(std::vector<InterpClass>& interpolationList) const {
  for (InterpClass& interpolation : interpolationList) {
    interpolation.Solved = false;
    for (const InterpClass& saved : interpolations_)
      if (saved.SolveType == interpolation.SolveType) interpolation = saved;
  }
}

void clsUndoItem::CopyData(const DataSheet& grid, const CellRange& range) {
  range_ = range;
  switch (Extent()) {
    case UndoExtent::WholeSheet:
    case UndoExtent::Import:
      cells_ = grid.Cells;
      break;
    case UndoExtent::Columns:
      sheet_ = grid;
      break;
    case UndoExtent::DeletedRows:
      // A row goes with all its columns, whichever of them were selected.
      range_.FirstCol = 1;
      range_.LastCol = std::max(grid.ColumnCount(), grid.Cells.GridLastCol());
      [[fallthrough]];
    case UndoExtent::Cells:
    case UndoExtent::HeadersAndCells:
      cells_ = grid.Cells.CopyRange(range_);
      break;
    default:
      break;
  }
}

void clsUndoItem::RecoverModels(const DataSheet& grid, const LocaleText& locale,
                                ModelCollection& regressionList) const {
  if (extent_ != UndoExtent::Columns || grid.IndependentVariables == sheet_->IndependentVariables) return;
  regressionList = {};
  LoadModelCatalog(regressionList, static_cast<int>(sheet_->IndependentVariables), locale);
  for (const auto& model : userModels_) regressionList.Add(model->id, model->CopyTo());
}

void clsUndoItem::RecoverData(DataSheet& grid) const {
  switch (Extent()) {
    case UndoExtent::WholeSheet:
    case UndoExtent::Import:
      grid.Cells = cells_;
      break;
    case UndoExtent::Columns:
      grid = *sheet_;
      break;
    case UndoExtent::InsertedRows:
      grid.Cells.GridDeleteRows(range_.FirstRow, range_.Rows());
      break;
    case UndoExtent::DeletedRows:
      grid.Cells.GridInsertRows(range_.FirstRow, range_.Rows());
      [[fallthrough]];
    case UndoExtent::Cells:
    case UndoExtent::HeadersAndCells:
      grid.Cells.PutRange(range_, cells_);
      break;
    default:
      break;
  }
}

}  // namespace quorvex
