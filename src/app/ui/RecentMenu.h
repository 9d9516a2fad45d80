#pragma once

#include <QMenu>
#include <string>
#include <string_view>

#include "core/Settings.h"

namespace quorvex {

class PreferenceKeeper;

// The files of one kind that were used last, below an entry of the File menu. One that is gone leaves the list when it
// is chosen.
class RecentMenu : public QMenu {
  Q_OBJECT

 public:
  // `section` is where the settings have the files. Settings and keeper outlive the menu.
  RecentMenu(const QString& title, std::string_view section, Settings& settings, PreferenceKeeper& keeper,
             QMenu* parent);

  // Puts a file first.
  void Remember(const std::string& fileName);

 signals:
  void Chosen(const QString& fileName);

 private:
  void Fill();
  void Choose(const std::string& fileName);

  const std::string section_;
  Settings& settings_;
  PreferenceKeeper& keeper_;
};

}  // namespace quorvex
