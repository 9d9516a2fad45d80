#include "app/ui/Autosave.h"

#include <QStatusBar>

#include "app/OfferRecovery.h"
#include "desktop/quorvexWindow.h"

namespace quorvex {
namespace {

constexpr int kInterval = 60'000;  // milliseconds

}  // namespace

Autosave::Autosave(std::string folder, QStatusBar& status) : store_(std::move(folder)), status_(status) {
  connect(&timer_, &QTimer::timeout, this, &Autosave::KeepAll);
  timer_.start(kInterval);
}

void Autosave::Watch(quorvexWindow& window) {
  const std::size_t number = ++opened_;
  windows_.insert({number, {&window, window.Document().Changed}});
  connect(&window, &quorvexWindow::Changed, this, [this, number] { windows_.at(number).Changed = true; });
  connect(&window, &quorvexWindow::SolveBegins, this, &Autosave::KeepAll);
  connect(&window, &quorvexWindow::Saved, this, [this, number] { store_.Forget(number); });
  // Whoever closes a window has been asked about its changes, so no copy is wanted any more.
  connect(&window, &QObject::destroyed, this, [this, number] {
    windows_.erase(number);
    store_.Forget(number);
  });
}

void Autosave::Adopt(const quorvexWindow& window, const RecoveryStore::LeftBehind& left) {
  for (const auto& [number, watched] : windows_)
    if (watched.Window == &window) store_.Adopt(number, left);
  // A copy of this run's own lets that of the other one go.
  KeepAll();
}

bool Autosave::KeepAll() {
  bool all = true;
  for (auto& [number, watched] : windows_)
    if (watched.Changed && !Keep(number, watched)) all = false;
  return all;
}

bool Autosave::Keep(std::size_t number, Watched& watched) {
  // Models that are being solved are between two states.
  if (watched.Window->Solver().Running()) return false;
  const Project& project = watched.Window->Document();
  if (project.IsSaved()) {
    store_.Forget(number);
  } else if (store_.Keep(number, project) != 0) {
    status_.showMessage(kNotKept, kInterval);
    return false;
  }
  watched.Changed = false;
  return true;
}

}  // namespace quorvex
