#pragma once

#include <memory>

#include <QLocalServer>
#include <QObject>
#include <QStringList>

class QLocalSocket;

namespace quilmora {

// Makes sure that a user runs one editor. The first holds a lock until its process ends, however it ends; a later start
// passes its documents to the first over a local socket that only this user may use, and exits. The object must outlive
// everything that writes the user's documents and settings.
class SingleInstance : public QObject {
  Q_OBJECT

 public:
  enum class Result {
    first,       // continue, and listen to documentsReceived(); error() may say what does not work
    handedOver,  // the running editor has the documents: exit
    failed,      // another editor runs but does not answer: exit with error()
  };

  static constexpr int maxMessageBytes = 1 << 20;
  static constexpr int maxConnections = 8;

  // `lockPath` and `socketPath` are absolute; missing folders are created.
  SingleInstance(QString lockPath, QString socketPath, QObject* parent = nullptr);
  // Next to the user's settings file, because settings and documents are what two editors must not share. If nothing
  // can be written there, in the session's runtime folder.
  static std::unique_ptr<SingleInstance> forUser();
  ~SingleInstance() override;

  // Becomes the first, or passes `documents` on (none: the running editor is only to show itself). Relative paths are
  // resolved against the current folder. Blocks for at most `timeoutMilliseconds`.
  Result start(const QStringList& documents, int timeoutMilliseconds = 5000);
  // Why start() failed, as a text to show; also why later starts cannot reach or notice this first editor.
  const QString& error() const { return m_error; }

 Q_SIGNALS:
  // A later start asks to show the window and open these absolute paths, possibly none.
  void documentsReceived(const QStringList& paths);

 private:
  enum class Lock { held, taken, impossible };

  Lock tryLock();
  QString reachableSocketPath();
  bool handOver(const QByteArray& message, int timeoutMilliseconds);
  void listen();
  void acceptConnections();
  void readFrom(QLocalSocket* socket);

  QString m_lockPath;
  QString m_socketPath;
  int m_socketFolder = -1;  // used when its path is too long for a socket
  QString m_error;
  int m_lockDescriptor = -1;
  int m_connectionCount = 0;
  QLocalServer m_server;  // declared last, because its connections still use the counters above while they are closed
};

}  // namespace quilmora
