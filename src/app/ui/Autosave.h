#pragma once

#include <QTimer>
#include <functional>
#include <map>
#include <string>

#include "app/RecoveryStore.h"

class QMainWindow;

namespace quorvex {

class Dataplot;
class quorvexWindow;

// Keeps copies of the projects and plots that are shown and not saved: once a minute, and before a solve, in which
// nothing can be kept, however long it runs.
class Autosave : public QObject {
 public:
  // `folder` is that of RecoveryStore. The frame, which outlives this, has the windows of plots below it, and a status
  // bar where what fails is told.
  Autosave(std::string folder, QMainWindow& frame);

  // From now on what the window shows is kept, until it is saved or the window goes. Plots are found without that.
  void Watch(quorvexWindow& window);
  // The window, of a project that is watched or of a plot, shows what a crash left behind.
  void Adopt(const QWidget& window, const RecoveryStore::LeftBehind& left);

  // Keeps a copy of each project and plot that changed since the last time. False where one could not be kept, or is at
  // work.
  bool KeepAll();

  RecoveryStore& Store() { return store_; }

 private:
  struct Watched {
    const QWidget* Window;
    std::function<bool()> IsSaved;
    std::function<bool()> AtWork;  // between two states, of which none is to be kept
    std::function<int()> Keep;     // 0 or the file error's number
    bool Changed;                  // since it was last kept
  };
  std::size_t Add(const QWidget& window, std::function<bool()> isSaved, std::function<bool()> atWork,
                  std::function<int(std::size_t number)> keep);
  void Watch(Dataplot& plot);
  void FindPlots();
  bool Keep(std::size_t number, Watched& watched);

  RecoveryStore store_;
  QMainWindow& frame_;
  QTimer timer_;
  std::map<std::size_t, Watched> windows_;  // by their numbers in the store
  std::size_t opened_ = 0;                  // so far
};

}  // namespace quorvex
