#pragma once

#include <QLocalServer>
#include <QStringList>

namespace quorvex {

// The way by which files reach the program that is already running: a socket per user. A file name that is sent to it
// is told by Requested as soon as no dialog is open.
class FileRequests : public QObject {
  Q_OBJECT

 public:
  FileRequests();

  // Becomes the one that is asked. False where another instance is, or no socket can be made.
  bool Listen();

  // Hands a file to a running instance. False where there is none that answers.
  static bool SendToRunning(const QString& fileName);

 signals:
  void Requested(const QString& fileName);

 private:
  void Receive();
  void TellWhenIdle();

  QLocalServer server_;
  QStringList waiting_;
};

}  // namespace quorvex
