#pragma once

#include <QAbstractTableModel>
#include <QGroupBox>
#include <QStyle>
#include <array>
#include <vector>

#include "solve/SolvedList.h"

class QComboBox;
class QLabel;
class QTableView;

namespace quorvex {

// The solved list as a table shows it: rank, model, and the key that it is sorted by; by AICc, BIC and CV also Akaike's
// weight and the group of models that the data can't tell apart. A solution that was
// found by trying harder, or whose search ended otherwise than by converging, bears a mark, and its tooltip says how.
// It keeps texts, not models, since these may go while the table is still on the screen.
class SolvedListModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  void Show(const std::vector<SolvedItem>& items, int sortIndex, char decimalSeparator);
  int RowOf(const QString& name) const;  // -1 where it is not in the list

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  struct Mark {
    QString Text;  // of the tooltip; empty for a row without one
    bool HasSign = false;
    QStyle::StandardPixmap Sign = {};
  };
  static Mark MarkOf(const SolvedItem& item);

  std::vector<std::array<QString, 5>> rows_;
  bool hasRanking_ = false;  // the latter two
  std::vector<Mark> marks_;
  QString keyName_;
};

// The frame at the side of a project window with its solutions, and the choice of what they are sorted by. A row is
// always current while there is one. Double click and Enter ask for its results.
class SolvedListPanel : public QGroupBox {
  Q_OBJECT

 public:
  explicit SolvedListPanel(QWidget* parent);

  void Show(const std::vector<SolvedItem>& items, int sortIndex, char decimalSeparator);
  std::vector<int> SelectedRows() const;
  void SetCurrentRow(int row);

 signals:
  void RowActivated(int row);
  void SortChosen(int sortIndex);

 private:
  SolvedListModel* model_;
  QTableView* SolvedList;
  QComboBox* cmbSortBy;
  QLabel* none_;
};

}  // namespace quorvex
