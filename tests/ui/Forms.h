#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QTest>
#include <algorithm>
#include <stdexcept>

namespace quorvex {

// A control of a form by its name. One that is missing ends the test.
template <typename Control = QWidget>
Control& In(const QWidget& form, const char* name) {
  auto* control = form.findChild<Control*>(name);
  if (control == nullptr) throw std::invalid_argument(std::string("no control ") + name);
  return *control;
}

inline QLineEdit& LineBox(const QWidget& form, const char* name) { return In<QLineEdit>(form, name); }
inline QString Text(const QWidget& form, const char* label) { return In<QLabel>(form, label).text(); }

// Of a wide option only the mark and the text take the click.
inline void Click(const QWidget& form, const char* name) {
  auto& button = In<QAbstractButton>(form, name);
  ASSERT_TRUE(button.isVisible() && button.isEnabled()) << name;
  QTest::mouseClick(&button, Qt::LeftButton, {}, {std::min(button.width() / 2, 8), button.height() / 2});
}

inline void Press(const QDialog& form, QDialogButtonBox::StandardButton button) {
  QTest::mouseClick(form.findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
}

// In place of what a field of one line holds.
inline void TypeInto(const QWidget& form, const char* name, const QString& text) {
  auto& field = In(form, name);
  field.setFocus();
  if (auto* line = qobject_cast<QLineEdit*>(&field)) line->selectAll();
  QTest::keyClicks(&field, text);
}

inline void GoToPage(const QWidget& form, int page) { form.findChild<QTabWidget*>()->setCurrentIndex(page); }

inline QListWidget& List(const QWidget& form, const char* name) { return In<QListWidget>(form, name); }
inline QStringList Rows(const QListWidget& list) {
  QStringList rows;
  for (int i = 0; i < list.count(); ++i) rows << list.item(i)->text();
  return rows;
}
inline void Choose(QListWidget& list, const QString& text) {
  list.setCurrentItem(list.findItems(text, Qt::MatchExactly).value(0));
}

}  // namespace quorvex
