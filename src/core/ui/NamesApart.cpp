#include "core/ui/NamesApart.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QScopedValueRollback>
#include <QStylePainter>
#include <QToolTip>
#include <algorithm>

namespace quorvex {
namespace {

constexpr QChar kLeftOut(0x2026);

qsizetype SharedStart(const QString& a, const QString& b) {
  return std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin();
}

// `count` characters of the name: its start and its end, or, where the difference is in neither, a piece around that.
QString Kept(const QString& name, qsizetype differs, qsizetype count) {
  const qsizetype half = count / 2;
  if (differs < count - half || differs >= name.size() - half)
    return name.left(count - half) + kLeftOut + name.right(half);
  const qsizetype start = count / 3, piece = count - start;
  const qsizetype from = std::clamp(differs - piece / 3, start, name.size() - piece);
  return name.left(start) + kLeftOut + name.mid(from, piece) +
         (from + piece < name.size() ? QString(kLeftOut) : QString());
}

}  // namespace

// In their order each name is most like one of its neighbours.
QHash<QString, qsizetype> SharedStarts(QStringList names) {
  names.sort();
  names.removeDuplicates();
  QHash<QString, qsizetype> shared;
  for (qsizetype i = 0; i < names.size(); ++i) {
    const qsizetype before = i > 0 ? SharedStart(names[i], names[i - 1]) : 0;
    const qsizetype behind = i + 1 < names.size() ? SharedStart(names[i], names[i + 1]) : 0;
    shared[names[i]] = std::max(before, behind);
  }
  return shared;
}

QString ElidedAround(const QString& name, qsizetype differs, const QFontMetrics& metrics, int width) {
  const auto fits = [&](const QString& text) { return metrics.horizontalAdvance(text) <= width; };
  if (fits(name)) return name;
  const qsizetype place = std::clamp<qsizetype>(differs, 0, name.size() - 1);
  qsizetype fitting = 1, tooMany = name.size();
  while (tooMany - fitting > 1) {
    const qsizetype middle = (fitting + tooMany) / 2;
    (fits(Kept(name, place, middle)) ? fitting : tooMany) = middle;
  }
  return Kept(name, place, fitting);
}

QString NamesApart::Shown(const QModelIndex& cell, const QFontMetrics& metrics, int width) const {
  const QString name = cell.data().toString();
  if (metrics.horizontalAdvance(name) <= width) return name;
  Read(*cell.model(), cell.column());
  return ElidedAround(name, shared_[cell.column()].value(name), metrics, width);
}

void NamesApart::Read(const QAbstractItemModel& model, int column) const {
  if (model_ != &model) {
    for (const QMetaObject::Connection& change : changes_) QObject::disconnect(change);
    const auto forget = [this] { shared_.clear(); };
    changes_ = {QObject::connect(&model, &QAbstractItemModel::modelReset, &here_, forget),
                QObject::connect(&model, &QAbstractItemModel::dataChanged, &here_, forget),
                QObject::connect(&model, &QAbstractItemModel::rowsInserted, &here_, forget),
                QObject::connect(&model, &QAbstractItemModel::rowsRemoved, &here_, forget)};
    model_ = &model;
    forget();
  }
  constexpr int kMostNames = 10'000;
  if (shared_.contains(column) || model.rowCount() > kMostNames) return;
  QStringList names;
  for (int row = 0; row < model.rowCount(); ++row) names << model.index(row, column).data().toString();
  shared_[column] = SharedStarts(std::move(names));
}

int RoomForText(const QStyleOptionViewItem& cell) {
  const QStyle& style = cell.widget != nullptr ? *cell.widget->style() : *QApplication::style();
  const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, &cell, cell.widget) + 1;
  return style.subElementRect(QStyle::SE_ItemViewItemText, &cell, cell.widget).width() - 2 * margin;
}

NameDelegate::NameDelegate(QAbstractItemView* view) : QStyledItemDelegate(view) {}

void NameDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const QScopedValueRollback painting(painting_, true);
  QStyledItemDelegate::paint(painter, option, index);
}

// How wide a cell wants to be is asked of the whole name.
void NameDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  if (painting_) option->text = names_.Shown(index, option->fontMetrics, RoomForText(*option));
}

bool NameDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                             const QModelIndex& index) {
  if (event->type() == QEvent::ToolTip && index.isValid() && !index.data(Qt::ToolTipRole).isValid()) {
    QStyleOptionViewItem cell = option;
    QStyledItemDelegate::initStyleOption(&cell, index);
    const QString name = index.data().toString();
    const bool cut = cell.fontMetrics.horizontalAdvance(name) > RoomForText(cell);
    // Which takes what looks like markup for markup.
    QToolTip::showText(event->globalPos(), cut ? Qt::convertFromPlainText(name) : QString(), view);
    return true;
  }
  return QStyledItemDelegate::helpEvent(event, view, option, index);
}

NameBox::NameBox(QWidget* parent) : QComboBox(parent) { setItemDelegate(new NameDelegate(view())); }

void NameBox::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionComboBox box;
  initStyleOption(&box);
  painter.drawComplexControl(QStyle::CC_ComboBox, box);
  if (currentIndex() >= 0) {
    constexpr int kMargin = 2;  // of styles, on either side
    const QRect room = style()->subControlRect(QStyle::CC_ComboBox, &box, QStyle::SC_ComboBoxEditField, this);
    const QModelIndex cell = model()->index(currentIndex(), modelColumn(), rootModelIndex());
    box.currentText = names_.Shown(cell, box.fontMetrics, room.width() - 2 * kMargin);
  }
  painter.drawControl(QStyle::CE_ComboBoxLabel, box);
}

}  // namespace quorvex
