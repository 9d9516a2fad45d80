#include "core/ui/RecentMenu.h"

#include <QFile>

#include "core/RecentFiles.h"
#include "core/ui/NumberedEntry.h"

namespace quorvex {

RecentMenu::RecentMenu(const QString& title, std::string_view section, Settings& settings, QMenu* parent)
    : QMenu(title, parent), section_(section), settings_(settings) {
  parent->addMenu(this);
  // With the menu around it: while it is empty it is disabled, and would never open to be filled.
  connect(parent, &QMenu::aboutToShow, this, &RecentMenu::Fill);
  Fill();
}

void RecentMenu::Fill() {
  clear();
  int number = 0;
  for (const std::string& file : RecentFiles(settings_, section_)) {
    QAction* action = addAction(NumberedEntry(++number, QString::fromStdString(file)));
    connect(action, &QAction::triggered, this, [this, file] { Choose(file); });
  }
  setEnabled(number > 0);
}

void RecentMenu::Choose(const std::string& fileName) {
  const QString name = QString::fromStdString(fileName);
  if (!QFile::exists(name)) RemoveRecentFile(settings_, section_, fileName);
  emit Chosen(name);
}

}  // namespace quorvex
