#pragma once

#include <memory>

#include <QLocalServer>
#include <QObject>
#include <QStringList>

class QLocalSocket;

namespace quilmora {

// Makes sure that a user runs one editor. The first holds a lock until its process ends, however it ends; a later start
// hands its documents to the first over a local socket that only this user may use, and exits. The object must outlive
// everything that writes the user's documents and settings.
class SingleInstance : public QObject {
  Q_OBJECT

 public:
  enum class Result {
    first,       // go on, and listen to documentsReceived(); error() may tell what does not work
    handedOver,  // the running editor has the documents: end
    failed,      // another editor runs but does not answer: end with error()
  };

  static constexpr int maxMessageBytes = 1 << 20;
  static constexpr int maxConnections = 8;

  // `lockPath` and `socketPath` are absolute; their folders are made when they are missing.
  SingleInstance(QString lockPath, QString socketPath, QObject* parent = nullptr);
  // Beside the user's settings file, because those settings and documents are what two editors must not share. Where
  // nothing can be written there, in the session's folder for such things.
  static std::unique_ptr<SingleInstance> forUser();
  ~SingleInstance() override;

  // Becomes the first, or hands `documents` over (none: the running editor is only to show itself). Relative paths are
  // taken from the current folder. Blocks for `patienceMilliseconds` at most.
  Result start(const QStringList& documents, int patienceMilliseconds = 5000);
  // Why start() failed, fit to be shown; also why a first editor cannot be reached by later ones, or not be known to
  // them.
  const QString& error() const { return m_error; }

 Q_SIGNALS:
  // A later start asks to show the window and open these absolute paths, maybe none.
  void documentsReceived(const QStringList& paths);

 private:
  enum class Lock { held, taken, impossible };

  Lock tryLock();
  QString reachableSocketPath();
  bool handOver(const QByteArray& message, int patienceMilliseconds);
  void listen();
  void acceptConnections();
  void readFrom(QLocalSocket* socket);

  QString m_lockPath;
  QString m_socketPath;
  int m_socketFolder = -1;  // where its path is too long for a socket
  QString m_error;
  int m_lockDescriptor = -1;
  int m_connectionCount = 0;
  QLocalServer m_server;  // the last, because its connections count down when they end with it
};

}  // namespace quilmora
