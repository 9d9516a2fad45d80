#include "app/ui/PreferenceKeeper.h"

#include <QAbstractEventDispatcher>
#include <QApplication>

#include "app/Preferences.h"
#include "app/SettingsStore.h"

namespace quorvex {

PreferenceKeeper::PreferenceKeeper(Settings& settings, Prompter& user) : settings_(settings), user_(user) {
  delay_.setSingleShot(true);
  connect(&delay_, &QTimer::timeout, this, &PreferenceKeeper::Store);
  // Nobody has to tell of a change: all are seen here, before the program waits for its next event.
  connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, [this] {
    constexpr int kDelay = 500;  // milliseconds; several that change together are stored together
    if (!settings_.Changes().empty() && !told_ && !delay_.isActive()) delay_.start(kDelay);
  });
}

// A dialog that is open stores its own, and says so.
void PreferenceKeeper::Store() {
  if (QApplication::activeModalWidget() == nullptr) Tell(SaveChanges(settings_));
}

void PreferenceKeeper::Tell(int error) {
  if (error == 0 || told_) return;
  told_ = true;
  TellWhetherStored(error, user_);
}

}  // namespace quorvex
