#pragma once

#include <QApplication>
#include <QPointer>
#include <QWidget>

namespace quorvex {

// The event loop of the desktop, and what holds for all of its windows.
//
// An exception that nobody caught ends the event that it came from and not the program, where somebody listens to
// Failed; without a listener it goes its way.
//
// A dialog that closes together with a message over it, before the window manager has given it the keyboard back, hands
// the keyboard on to the window beneath. The window manager would give it to the dialog, and so to nobody.
//
// Tab goes through each window in the order of its layouts.
//
// Where the desktop has no style of its own, controls have edges that can be seen.
//
// Screen readers announce each window made with Qt::Dialog as a dialog, a QDialog or not.
class DesktopApplication : public QApplication {
  Q_OBJECT

 public:
  DesktopApplication(int& argc, char** argv);

  bool notify(QObject* receiver, QEvent* event) override;

 signals:
  void Failed(const QString& what);  // in a sentence

 private:
  void Tell(const QString& what, bool painting);
  void FollowKeyboard(const QObject& receiver, const QEvent& event);

  bool telling_ = false;
  QString toldOfPainting_;
  QPointer<const QWidget> active_;  // the window that had the keyboard last
};

}  // namespace quorvex
