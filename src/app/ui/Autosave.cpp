#include "app/ui/Autosave.h"

#include <QMainWindow>
#include <QStatusBar>
#include <algorithm>

#include "app/OfferRecovery.h"
#include "desktop/quorvexWindow.h"
#include "files/ui/Dataplot.h"

namespace quorvex {
namespace {

constexpr int kInterval = 60'000;  // milliseconds

}  // namespace

Autosave::Autosave(std::string folder, QMainWindow& frame) : store_(std::move(folder)), frame_(frame) {
  connect(&timer_, &QTimer::timeout, this, &Autosave::KeepAll);
  timer_.start(kInterval);
}

std::size_t Autosave::Add(const QWidget& window, std::function<bool()> isSaved, std::function<bool()> atWork,
                          std::function<int(std::size_t number)> keep) {
  const std::size_t number = ++opened_;
  const bool changed = !isSaved();
  windows_.insert(
      {number, {&window, std::move(isSaved), std::move(atWork), std::bind_front(std::move(keep), number), changed}});
  // Whoever closes a window has been asked about its changes, so no copy is wanted any more.
  connect(&window, &QObject::destroyed, this, [this, number] {
    windows_.erase(number);
    store_.Forget(number);
  });
  return number;
}

void Autosave::Watch(quorvexWindow& window) {
  const std::size_t number = Add(
      window, [&window] { return window.Document().IsSaved(); }, [&window] { return window.Solver().Running(); },
      [this, &window](std::size_t own) { return store_.Keep(own, window.Document()); });
  connect(&window, &quorvexWindow::Changed, this, [this, number] { windows_.at(number).Changed = true; });
  connect(&window, &quorvexWindow::SolveBegins, this, &Autosave::KeepAll);
  connect(&window, &quorvexWindow::Saved, this, [this, number] { store_.Forget(number); });
}

void Autosave::Watch(Dataplot& plot) {
  const std::size_t number = Add(
      plot, [&plot] { return !plot.Document().Changed(); }, [] { return false; },
      [this, &plot](std::size_t own) { return store_.Keep(own, plot.Document()); });
  connect(&plot, &Dataplot::Changed, this, [this, number] {
    Watched& watched = windows_.at(number);
    watched.Changed = true;
    if (watched.IsSaved()) store_.Forget(number);
  });
}

// Plots are opened by many; nothing of them is lost that changes before they are found.
void Autosave::FindPlots() {
  for (Dataplot* plot : frame_.findChildren<Dataplot*>())
    if (std::ranges::none_of(windows_, [plot](const auto& each) { return each.second.Window == plot; })) Watch(*plot);
}

void Autosave::Adopt(const QWidget& window, const RecoveryStore::LeftBehind& left) {
  FindPlots();
  for (const auto& [number, watched] : windows_)
    if (watched.Window == &window) store_.Adopt(number, left);
  // A copy of this run's own lets that of the other one go.
  KeepAll();
}

bool Autosave::KeepAll() {
  FindPlots();
  bool all = true;
  for (auto& [number, watched] : windows_)
    if (watched.Changed && !Keep(number, watched)) all = false;
  return all;
}

bool Autosave::Keep(std::size_t number, Watched& watched) {
  if (watched.AtWork()) return false;
  if (watched.IsSaved()) {
    store_.Forget(number);
  } else if (watched.Keep() != 0) {
    frame_.statusBar()->showMessage(kNotKept, kInterval);
    return false;
  }
  watched.Changed = false;
  return true;
}

}  // namespace quorvex
