#pragma once

#include <QMenu>
#include <string>
#include <string_view>

#include "core/Settings.h"

namespace quorvex {

// The files of one kind that were used last, below an entry of a menu. One that is gone leaves the list when it is
// chosen.
class RecentMenu : public QMenu {
  Q_OBJECT

 public:
  // `section` is where the settings, which outlive the menu, have the files.
  RecentMenu(const QString& title, std::string_view section, Settings& settings, QMenu* parent);

 signals:
  void Chosen(const QString& fileName);

 private:
  void Fill();
  void Choose(const std::string& fileName);

  const std::string section_;
  Settings& settings_;
};

}  // namespace quorvex
