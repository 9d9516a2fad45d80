#pragma once

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <algorithm>

#include "core/Session.h"

namespace quorvex {

// Where the pictures of this run go, and what their windows work with.
struct Shots {
  QString Folder, Suffix;
  Session& Run;
  QStringList Wanted = {};  // what names begin with; all where it is empty

  // The window as it looks once its last change is in force and painted.
  void Take(QWidget& window, const QString& name) const {
    for (int i = 0; i < 5; ++i) QApplication::processEvents();
    const auto begins = [&](const QString& start) { return name.startsWith(start); };
    if (!Wanted.isEmpty() && std::none_of(Wanted.begin(), Wanted.end(), begins)) return;
    window.grab().save(Folder + '/' + name + Suffix + ".png");
  }

  // The dialog that an entry of the frame's menus opens, once `fill` has been at its controls.
  void TakeDialog(
      QWidget& frame, const char* action, const QString& name, void (*fill)(QDialog& dialog) = [](QDialog&) {}) const {
    QTimer::singleShot(0, &frame, [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      fill(*dialog);
      Take(*dialog, name);
      dialog->reject();
    });
    frame.findChild<QAction*>(action)->trigger();
  }
};

void TakeCalculator(const Shots& shots);
void TakeEstimates(const Shots& shots);
void TakeFrame(const Shots& shots);
void TakeResults(const Shots& shots);
void TakePreferences(const Shots& shots);
void TakeProperties(const Shots& shots);
void TakeImports(const Shots& shots);
void TakeManual(const Shots& shots);
void TakeModels(const Shots& shots);
void TakePlotWindow(const Shots& shots);
void TakeNewPlots(const Shots& shots);
void TakeProgress(const Shots& shots);
void TakeSelection(const Shots& shots);
void TakeSheet(const Shots& shots);
void TakeSolve(const Shots& shots);
void TakeTutorial(const Shots& shots);

}  // namespace quorvex
