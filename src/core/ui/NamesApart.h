#pragma once

#include <QAbstractItemModel>
#include <QComboBox>
#include <QFontMetrics>
#include <QHash>
#include <QStyledItemDelegate>

class QAbstractItemView;

namespace quorvex {

// How far from its start each of the names is like some other, in characters; it may be the whole of a name that
// another one goes on.
QHash<QString, qsizetype> SharedStarts(QStringList names);

// As much of a name as has room, with "…" for what is left out: never the character number `differs`, counted from 0,
// by which it is told from others, nor its start.
QString ElidedAround(const QString& name, qsizetype differs, const QFontMetrics& metrics, int width);

// Cuts the names in a column of a model that a view has no room for, so that what tells them apart stays.
class NamesApart {
 public:
  // What is shown of the text of a cell.
  QString Shown(const QModelIndex& cell, const QFontMetrics& metrics, int width) const;

 private:
  void Read(const QAbstractItemModel& model, int column) const;

  mutable const QAbstractItemModel* model_ = nullptr;
  mutable QHash<int, QHash<QString, qsizetype>> shared_;  // of each column that was asked for
  mutable QList<QMetaObject::Connection> changes_;
  QObject here_;
};

// The room that a style leaves for the text of a cell.
int RoomForText(const QStyleOptionViewItem& cell);

// Draws the cells of one column so; the whole of a name that is cut is its tooltip.
class NameDelegate : public QStyledItemDelegate {
 public:
  explicit NameDelegate(QAbstractItemView* view);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

 private:
  NamesApart names_;
  mutable bool painting_ = false;
};

// A list that opens from a box, which cuts its names so, closed and open.
class NameBox : public QComboBox {
 public:
  explicit NameBox(QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  NamesApart names_;
};

}  // namespace quorvex
