#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engine/InterpClass.h"
#include "engine/ModelCollection.h"
#include "sheet/CellRange.h"
#include "sheet/DataSheet.h"
#include "sheet/UndoLabel.h"

namespace quorvex {

// A snapshot of what one operation could destroy.
class clsUndoItem {
 public:
  explicit clsUndoItem(const UndoLabel& label)
      : clsUndoItem(label.Text, ExtentOf(label.Operation), label.HasPatterns) {}

  // The snapshot that takes back the recovery of this one, which is about to happen.
  clsUndoItem Opposite(const DataSheet& grid, const ModelCollection& regressionList,
                       const std::vector<InterpClass>& interpolationList) const;

  std::string EventString;  // the label, the text shown in the menu, such as "&Undo Sort"
  UndoExtent Extent() const { return extent_; }

  std::size_t RegressionCount() const { return regressions_.size(); }
  std::size_t InterpolationCount() const { return interpolations_.size(); }

  void CopyInterpolation(const std::vector<InterpClass>& interpolationList);
  void CopyRegression(const ModelCollection& regressionList);
  // Makes the saved models the solved ones of the list again, and no others. A user-defined model whose definition has
  // changed since, or that is gone, is left out; returns how many those are.
  std::size_t RecoverRegression(ModelCollection& regressionList) const;
  // The same for interpolations, which are always there.
  void RecoverInterpolation(std::vector<InterpClass>& interpolationList) const;

  void RecoverData(DataSheet& grid) const;
  // Makes the list that of the saved columns, where it is for another number of variables: the catalogue and the user's
  // models. To be called before RecoverData.
  void RecoverModels(const DataSheet& grid, const LocaleText& locale, ModelCollection& regressionList) const;
  void CopyFormat(const DataSheet& grid) { formats_ = grid.Formats; }
  void RecoverFormat(DataSheet& grid) const { grid.Formats = formats_; }
  void CopyPatterns(const DataSheet& grid);
  void RecoverPatterns(DataSheet& grid) const;
  void CopyHeaders(const DataSheet& grid) { headers_ = grid.Headers; }
  void RecoverHeaders(DataSheet& grid) const { grid.Headers = headers_; }
  // `range`: the cells that the operation is about to change, or the rows it inserts.
  void CopyData(const DataSheet& grid, const CellRange& range);

  // Whether headers, number patterns or cells belong to the snapshot.
  bool HasHeaders() const;
  bool HasPatterns() const { return hasPatterns_; }
  bool HasData() const { return extent_ != UndoExtent::Formats && extent_ != UndoExtent::Headers; }
  // All that belongs to it.
  void Copy(const DataSheet& grid, const CellRange& range, const ModelCollection& regressionList,
            const std::vector<InterpClass>& interpolationList);

 private:
  clsUndoItem(std::string text, UndoExtent extent, bool hasPatterns)
      : EventString(std::move(text)), extent_(extent), hasPatterns_(hasPatterns || extent == UndoExtent::Import) {}

  UndoExtent extent_;
  bool hasPatterns_;
  CellRange range_;
  GridCells cells_;
  std::optional<DataSheet> sheet_;                       // where its columns change
  std::vector<std::unique_ptr<ModelClass>> userModels_;  // of those columns
  std::vector<std::string> headers_, patterns_;
  std::vector<ColumnFormat> formats_;
  std::vector<std::unique_ptr<ModelClass>> regressions_;
  std::vector<InterpClass> interpolations_;
};

}  // namespace quorvex
