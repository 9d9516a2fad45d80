#include "app/ui/FileRequests.h"

#include <unistd.h>

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>
#include <QTimer>

namespace quorvex {
namespace {

constexpr int kPatience = 2000;  // milliseconds that a running instance has to answer

// Empty where there is no folder that is this user's alone.
QString SocketName() {
  QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
  if (!folder.startsWith('/')) {
    folder = QDir::tempPath() + "/quorvex-" + QString::number(getuid());
    QDir().mkdir(folder, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
  }
  // In a folder for all somebody else may have made one of this name, to hear what is opened.
  return QFileInfo(folder).ownerId() == getuid() ? folder + "/quorvex.socket" : QString();
}

}  // namespace

FileRequests::FileRequests() {
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  connect(&server_, &QLocalServer::newConnection, this, &FileRequests::Receive);
}

bool FileRequests::Listen() {
  const QString name = SocketName();
  if (name.isEmpty()) return false;
  QLocalSocket other;
  other.connectToServer(name);
  if (other.waitForConnected(kPatience)) return false;
  return server_.listen(name);  // takes the place of what an instance that crashed left behind
}

// A name ends by a line feed, and so does the answer.
bool FileRequests::SendToRunning(const QString& fileName) {
  const QString name = SocketName();
  if (name.isEmpty()) return false;
  QLocalSocket socket;
  socket.connectToServer(name);
  if (!socket.waitForConnected(kPatience)) return false;
  socket.write(QFileInfo(fileName).absoluteFilePath().toUtf8() + '\n');
  // A socket takes bytes for an instance that hangs, too; the answer tells that one is at work.
  return socket.waitForBytesWritten(kPatience) && socket.waitForReadyRead(kPatience);
}

void FileRequests::Receive() {
  while (QLocalSocket* socket = server_.nextPendingConnection()) {
    const auto read = [this, socket] {
      while (socket->canReadLine()) {
        waiting_ << QString::fromUtf8(socket->readLine().chopped(1));
        socket->write("\n");
        socket->flush();
        // The answer goes out first, since opening the file may ask its user something, and the sender waits.
        QTimer::singleShot(0, this, &FileRequests::TellWhenIdle);
      }
    };
    connect(socket, &QLocalSocket::readyRead, this, read);
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    read();
  }
}

void FileRequests::TellWhenIdle() {
  constexpr int kRetry = 200;  // milliseconds
  if (waiting_.isEmpty()) return;
  // A project that opens now would come between the user and a question.
  if (QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr) {
    QTimer::singleShot(kRetry, this, &FileRequests::TellWhenIdle);
    return;
  }
  emit Requested(waiting_.takeFirst());
}

}  // namespace quorvex
