#pragma once

#include <QTimer>
#include <map>
#include <string>

#include "app/RecoveryStore.h"

class QStatusBar;

namespace quorvex {

class quorvexWindow;

// Keeps copies of the projects that are shown and not saved: once a minute, and before a solve, in which nothing can be
// kept, however long it runs.
class Autosave : public QObject {
 public:
  // `folder` is that of RecoveryStore. What fails stands in the status bar, which outlives this.
  Autosave(std::string folder, QStatusBar& status);

  // From now on what the window shows is kept, until it is saved or the window goes.
  void Watch(quorvexWindow& window);
  // The window, which is watched, shows what a crash left behind.
  void Adopt(const quorvexWindow& window, const RecoveryStore::LeftBehind& left);

  // Keeps a copy of each project that changed since the last time. False where one could not be kept, or is at work.
  bool KeepAll();

  RecoveryStore& Store() { return store_; }

 private:
  struct Watched {
    quorvexWindow* Window;
    bool Changed;  // since it was last kept
  };
  bool Keep(std::size_t number, Watched& watched);

  RecoveryStore store_;
  QStatusBar& status_;
  QTimer timer_;
  std::map<std::size_t, Watched> windows_;  // by their numbers in the store
  std::size_t opened_ = 0;                  // so far
};

}  // namespace quorvex
