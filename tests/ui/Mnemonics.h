#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QLabel>
#include <QTabWidget>
#include <map>
#include <string>

namespace quorvex {

// On each page of the dialog no two of its labels, buttons and tabs answer to the same letter, and each label of a
// control has one.
inline void ExpectMnemonicsDoNotMeet(QWidget& dialog) {
  auto* tabs = dialog.findChild<QTabWidget*>();
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
                    button->text() == "..." || button->text().startsWith('#'))
            << button->text().toStdString();
      }
    for (auto* label : dialog.findChildren<QLabel*>())
      if (label->isVisible() && label->buddy() != nullptr) {
        EXPECT_TRUE(take(label->text())) << label->text().toStdString();
      }
  }
  if (tabs != nullptr) tabs->setCurrentIndex(shown);
}

}  // namespace quorvex
