#pragma once

#include <QApplication>

namespace quorvex {

// The event loop of the desktop, and what holds for all of its windows.
//
// An exception that nobody caught ends the event that it came from and not the program, where somebody listens to
// Failed; without a listener it goes its way.
class DesktopApplication : public QApplication {
  Q_OBJECT

 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override;

 signals:
  void Failed(const QString& what);  // in a sentence

 private:
  void Tell(const QString& what, bool painting);

  bool telling_ = false;
  QString toldOfPainting_;
};

}  // namespace quorvex
