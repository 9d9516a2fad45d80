#include "core/ui/TabOrder.h"

#include <QAbstractItemView>
#include <QFormLayout>
#include <QGridLayout>
#include <QMainWindow>
#include <QMdiSubWindow>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QVariant>
#include <QWidget>
#include <algorithm>
#include <utility>
#include <vector>

namespace quorvex {
namespace {

// The items of a layout from top left to bottom right.
std::vector<QLayoutItem*> InReadingOrder(const QLayout& layout) {
  std::vector<std::pair<std::pair<int, int>, QLayoutItem*>> placed;
  for (int i = 0; i < layout.count(); ++i) {
    int row = 0, column = i, rows = 1, columns = 1;
    if (const auto* grid = qobject_cast<const QGridLayout*>(&layout)) {
      grid->getItemPosition(i, &row, &column, &rows, &columns);
    } else if (const auto* form = qobject_cast<const QFormLayout*>(&layout)) {
      QFormLayout::ItemRole role = QFormLayout::LabelRole;
      form->getItemPosition(i, &row, &role);
      column = role;
    }
    placed.push_back({{row, column}, layout.itemAt(i)});
  }
  std::ranges::stable_sort(placed, {}, [](const auto& item) { return item.first; });
  std::vector<QLayoutItem*> items;
  for (const auto& item : placed) items.push_back(item.second);
  return items;
}

void Gather(QWidget& widget, std::vector<QWidget*>& found);

void Gather(const QLayout& layout, std::vector<QWidget*>& found) {
  for (QLayoutItem* item : InReadingOrder(layout)) {
    if (item->widget() != nullptr) Gather(*item->widget(), found);
    if (item->layout() != nullptr) Gather(*item->layout(), found);
  }
}

void Gather(QWidget& widget, std::vector<QWidget*>& found) {
  if (auto* tabs = qobject_cast<QTabWidget*>(&widget)) {
    // The widget around the tabs hands Tab on to them, from wherever it stands: behind the pages it would lead back.
    // The policy of the one is passed on to the other.
    const Qt::FocusPolicy policy = tabs->tabBar()->focusPolicy();
    tabs->setFocusPolicy(Qt::NoFocus);
    tabs->tabBar()->setFocusPolicy(policy);
    found.push_back(tabs->tabBar());
    for (int i = 0; i < tabs->count(); ++i) Gather(*tabs->widget(i), found);
    return;
  }
  // Of option buttons that belong together Tab leads to the chosen one alone, whichever that will be.
  if (widget.focusPolicy() != Qt::NoFocus) found.push_back(&widget);
  if (auto* pages = qobject_cast<QStackedWidget*>(&widget)) {
    for (int i = 0; i < pages->count(); ++i) Gather(*pages->widget(i), found);
  } else if (auto* splitter = qobject_cast<QSplitter*>(&widget)) {
    for (int i = 0; i < splitter->count(); ++i) Gather(*splitter->widget(i), found);
  } else if (auto* table = qobject_cast<QAbstractItemView*>(&widget)) {
    // The controls that stand in cells, in the order of these.
    for (auto* cell : table->viewport()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) Gather(*cell, found);
  } else if (auto* area = qobject_cast<QScrollArea*>(&widget)) {
    if (area->widget() != nullptr) Gather(*area->widget(), found);
  } else if (widget.layout() != nullptr) {
    Gather(*widget.layout(), found);
  }
}

// Qt moves a control together with all that lies between it and the part of it that takes its keys, such as the line of
// an editable box. Where the control to go before is among that, the order would fall apart into two rings.
bool WouldMoveAlong(const QWidget& control, const QWidget* before) {
  for (const QWidget* part : control.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    if (part->focusProxy() != &control) continue;
    const QWidget* between = control.nextInFocusChain();
    while (between != part && between != before && between != &control) between = between->nextInFocusChain();
    return between == before;
  }
  return false;
}

}  // namespace

void TabAsLaidOut(QWidget& window) {
  if (window.property(kOwnTabOrder).toBool()) return;
  std::vector<QWidget*> controls;
  if (auto* project = qobject_cast<QMdiSubWindow*>(&window)) {
    if (project->widget() != nullptr) Gather(*project->widget(), controls);
  } else if (qobject_cast<QMainWindow*>(&window) == nullptr && window.layout() != nullptr) {
    Gather(*window.layout(), controls);
  }
  if (controls.empty()) return;
  // Tab begins behind the window. Qt puts nothing behind what takes no keys, and takes the last control and the first
  // for neighbours already, whichever they are. A window that hands its keys on begins there, and would be moved along.
  const Qt::FocusPolicy policy = window.focusPolicy();
  if (window.isWindow() && window.focusProxy() == nullptr) {
    window.setFocusPolicy(Qt::TabFocus);
    controls.insert(controls.begin(), &window);
  }
  for (std::size_t i = 1; i < controls.size(); ++i)
    if (!WouldMoveAlong(*controls[i], controls[i - 1])) QWidget::setTabOrder(controls[i - 1], controls[i]);
  if (window.focusPolicy() != policy) window.setFocusPolicy(policy);
}

}  // namespace quorvex
