#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QMenu>
#include <QTabWidget>
#include <QToolBar>
#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace quorvex {

// Tab leads from control to control as the eye goes, along lines or down columns: never to one above in its column nor
// to one before in its line, of those that were reached already. Page by page where the window has tabs.
inline void ExpectTabsFollowTheEye(QWidget& window) {
  auto* tabs = window.findChild<QTabWidget*>();
  if (tabs != nullptr && !tabs->isVisible()) tabs = nullptr;
  const int shown = tabs != nullptr ? tabs->currentIndex() : 0;
  const auto told = [](const QWidget& w) {
    return std::string(w.metaObject()->className()) + " '" + w.objectName().toStdString() + '\'';
  };
  for (int page = 0; page < (tabs != nullptr ? tabs->count() : 1); ++page) {
    if (tabs != nullptr) tabs->setCurrentIndex(page);
    std::vector<std::pair<const QWidget*, QRect>> reached;
    for (QWidget* next = window.nextInFocusChain(); next != &window; next = next->nextInFocusChain()) {
      if (next->window() != &window || !next->isVisible() || !next->isEnabled() || next->focusProxy() != nullptr ||
          (next->focusPolicy() & Qt::TabFocus) == 0 || next->visibleRegion().isEmpty())
        continue;
      const QRect place(next->mapTo(&window, QPoint()), next->size());
      for (const auto& [before, there] : reached) {
        const bool column = place.left() <= there.right() && there.left() <= place.right();
        const int lower = std::min(place.bottom(), there.bottom()), upper = std::max(place.top(), there.top());
        const bool line = 2 * (lower - upper) > std::min(place.height(), there.height());
        EXPECT_FALSE(column && place.bottom() < there.top())
            << told(window) << ", page " << page << ": " << told(*next) << " above " << told(*before);
        EXPECT_FALSE(line && place.right() < there.left())
            << told(window) << ", page " << page << ": " << told(*next) << " left of " << told(*before);
      }
      reached.emplace_back(next, place);
    }
    // None is left out of the round.
    for (const QWidget* control : window.findChildren<QWidget*>())
      if (control->window() == &window && control->isVisible() && control->isEnabled() &&
          control->focusProxy() == nullptr && (control->focusPolicy() & Qt::TabFocus) != 0 &&
          !control->visibleRegion().isEmpty()) {
        EXPECT_TRUE(std::ranges::any_of(reached, [&](const auto& other) { return other.first == control; }))
            << told(window) << ", page " << page << ": " << told(*control) << " is not reached";
      }
  }
  if (tabs != nullptr) tabs->setCurrentIndex(shown);
}

// Walks through a window as a screen reader may: every element that can be reached, those of hidden pages included, is
// asked what can be asked of it. Reports what takes the focus or is read by its name, and has none.
class AccessibilityWalk {
 public:
  explicit AccessibilityWalk(QWidget& window) {
    QAccessibleInterface* root = QAccessible::queryAccessibleInterface(&window);
    if (window.windowType() == Qt::Dialog) {
      EXPECT_TRUE(root->role() == QAccessible::Dialog || root->role() == QAccessible::AlertMessage) << root->role();
    }
    Visit(root, 0);
    if (window.isVisible()) ExpectTabsFollowTheEye(window);
  }

  // The names that were met.
  std::set<std::string> Names;

 private:
  // Of the many cells of a table the first are met and the last one.
  static constexpr int kMostChildren = 100;
  static constexpr int kDeepest = 60;

  void Visit(QAccessibleInterface* element, int depth) {
    if (element == nullptr || !element->isValid()) return;
    ASSERT_LT(depth, kDeepest) << "The elements go round in a circle.";
    const std::string name = element->text(QAccessible::Name).toStdString();
    if (!name.empty()) Names.insert(name);
    for (const auto text : {QAccessible::Description, QAccessible::Value, QAccessible::Help, QAccessible::Accelerator})
      element->text(text);
    EXPECT_NE(element->role(), QAccessible::NoRole) << name;
    if (!element->state().invisible) element->rect();
    if (QAccessibleValueInterface* value = element->valueInterface()) value->currentValue();
    if (QAccessibleTextInterface* text = element->textInterface()) text->text(0, text->characterCount());
    if (QAccessibleActionInterface* action = element->actionInterface()) action->actionNames();
    if (QAccessibleTableInterface* table = element->tableInterface()) Ask(*table);
    EXPECT_FALSE(name.empty() && (TakesFocus(element) || IsRead(element))) << "Without a name: " << Told(element);

    const int count = element->childCount();
    for (int i = 0; i < std::min(count, kMostChildren); ++i) Visit(element->child(i), depth + 1);
    if (count > kMostChildren) Visit(element->child(count - 1), depth + 1);
  }

  static void Ask(QAccessibleTableInterface& table) {
    table.selectedCellCount();
    for (const int row : {0, table.rowCount() - 1})
      for (const int column : {0, table.columnCount() - 1})
        if (row >= 0 && row < table.rowCount() && column >= 0 && column < table.columnCount()) {
          QAccessibleInterface* cell = table.cellAt(row, column);
          ASSERT_NE(cell, nullptr) << row << ' ' << column;
          cell->text(QAccessible::Name);
          cell->state();
          table.rowDescription(row);
          table.columnDescription(column);
        }
  }

  // Whether the user can get there by Tab. What is within a combo or spin box goes by the name of the box, and what
  // Qt builds for its own use bears a name of Qt's.
  static bool TakesFocus(QAccessibleInterface* element) {
    const auto* widget = qobject_cast<QWidget*>(element->object());
    if (widget == nullptr || (widget->focusPolicy() & Qt::TabFocus) == 0 || widget->focusProxy() != nullptr)
      return false;
    for (const QWidget* box = widget->parentWidget(); box != nullptr; box = box->parentWidget())
      if (qobject_cast<const QAbstractSpinBox*>(box) != nullptr || qobject_cast<const QComboBox*>(box) != nullptr)
        return false;
    return !widget->objectName().startsWith("qt_");
  }

  // Whether a screen reader reads it by its name alone.
  static bool IsRead(QAccessibleInterface* element) {
    switch (element->role()) {
      case QAccessible::Button:
      case QAccessible::ButtonMenu:
      case QAccessible::MenuItem:
      case QAccessible::PageTab:
      case QAccessible::Table:
      case QAccessible::ColumnHeader:
      case QAccessible::StaticText:
        return !element->state().invisible;
      default:
        return false;
    }
  }

  // Enough to find the control: its class and object name, and those of what it stands in.
  static std::string Told(QAccessibleInterface* element) {
    std::string text;
    for (const QObject* object = element->object(); object != nullptr; object = object->parent())
      text += std::string(text.empty() ? "" : " in ") + object->metaObject()->className() + " '" +
              object->objectName().toStdString() + '\'';
    return text;
  }
};

// On each page of the dialog no two of its labels, buttons and tabs answer to the same letter, and each label of a
// control has one. A button that shows a value, which is its description, needs none, nor does one of a tool bar, which
// shows no letters.
inline void ExpectMnemonicsDoNotMeet(QWidget& dialog) {
  auto* tabs = dialog.findChild<QTabWidget*>();
  if (tabs != nullptr && !tabs->isVisible()) tabs = nullptr;
  const int shown = tabs != nullptr ? tabs->currentIndex() : 0;
  for (int page = 0; page < (tabs != nullptr ? tabs->count() : 1); ++page) {
    std::map<QChar, std::string> used;
    const auto take = [&](QString text) {
      text.replace("&&", "");
      const qsizetype at = text.indexOf('&');
      if (at < 0) return false;
      const auto [other, fresh] = used.emplace(text[at + 1].toLower(), text.toStdString());
      EXPECT_TRUE(fresh) << "page " << page << ": " << text.toStdString() << " and " << other->second;
      return true;
    };
    if (tabs != nullptr) {
      tabs->setCurrentIndex(page);
      for (int i = 0; i < tabs->count(); ++i) EXPECT_TRUE(take(tabs->tabText(i)));
    }
    for (auto* button : dialog.findChildren<QAbstractButton*>())
      if (button->isVisible() && !button->text().isEmpty()) {
        const bool has = take(button->text());
        EXPECT_TRUE(has || qobject_cast<QDialogButtonBox*>(button->parentWidget()) != nullptr ||
                    qobject_cast<QToolBar*>(button->parentWidget()) != nullptr || button->text() == "..." ||
                    !button->accessibleDescription().isEmpty())
            << button->text().toStdString();
      }
    for (auto* label : dialog.findChildren<QLabel*>())
      if (label->isVisible() && label->buddy() != nullptr) {
        EXPECT_TRUE(take(label->text()) || label->buddy()->focusPolicy() == Qt::NoFocus) << label->text().toStdString();
      }
  }
  if (tabs != nullptr) tabs->setCurrentIndex(shown);
}

// Each entry of the menus has a letter, and none that another of its menu has.
inline void ExpectMnemonicsDoNotMeet(const QList<QAction*>& entries) {
  std::set<QChar> used;
  for (const QAction* entry : entries) {
    if (entry->isSeparator()) continue;
    const QString text = entry->text().replace("&&", "");
    const qsizetype at = text.indexOf('&');
    ASSERT_GE(at, 0) << text.toStdString();
    EXPECT_TRUE(used.insert(text[at + 1].toLower()).second) << text.toStdString();
    if (entry->menu() != nullptr) ExpectMnemonicsDoNotMeet(entry->menu()->actions());
  }
}

}  // namespace quorvex
