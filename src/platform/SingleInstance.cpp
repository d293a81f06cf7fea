#include "platform/SingleInstance.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <system_error>

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>
#include <QtEndian>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace quilmora {

namespace {

// A message: these bytes, the length of what follows as 32 bits, then the paths in UTF-8, each ended by a null
// character. The answer is one byte.
const QByteArray greeting = QByteArrayLiteral("QLMR1");
constexpr qsizetype headerBytes = 5 + 4;
constexpr char accepted = '+';
constexpr int senderPatienceMilliseconds = 3000;
constexpr int retryMilliseconds = 50;

QByteArray encodeMessage(const QStringList& paths) {
  QByteArray body;
  for (const QString& path : paths) body += QDir::current().absoluteFilePath(path).toUtf8() + '\0';
  QByteArray length(4, '\0');
  qToBigEndian(static_cast<quint32>(body.size()), length.data());
  return greeting + length + body;
}

bool isMisbegun(const QByteArray& received) {
  if (!greeting.startsWith(received.left(greeting.size()))) return true;
  return received.size() >= headerBytes &&
         qFromBigEndian<quint32>(received.constData() + greeting.size()) > SingleInstance::maxMessageBytes;
}

bool isWhole(const QByteArray& received) {
  return received.size() >= headerBytes &&
         received.size() - headerBytes >=
             static_cast<qsizetype>(qFromBigEndian<quint32>(received.constData() + greeting.size()));
}

// Nothing unless the message is exactly what encodeMessage() makes.
std::optional<QStringList> decodeMessage(const QByteArray& received) {
  const QByteArray body = received.mid(headerBytes);
  if (body.size() != static_cast<qsizetype>(qFromBigEndian<quint32>(received.constData() + greeting.size())))
    return std::nullopt;
  QStringList paths;
  for (qsizetype start = 0; start < body.size();) {
    const qsizetype end = body.indexOf('\0', start);
    if (end < 0) return std::nullopt;
    const QByteArray bytes = body.mid(start, end - start);
    const QString path = QString::fromUtf8(bytes);
    if (!path.startsWith(u'/') || path.toUtf8() != bytes) return std::nullopt;
    paths.append(path);
    start = end + 1;
  }
  return paths;
}

}  // namespace

SingleInstance::SingleInstance(QString lockPath, QString socketPath, QObject* parent)
    : QObject(parent), m_lockPath(std::move(lockPath)), m_socketPath(std::move(socketPath)) {
  m_server.setSocketOptions(QLocalServer::UserAccessOption);
  m_server.setMaxPendingConnections(maxConnections);
  connect(&m_server, &QLocalServer::newConnection, this, &SingleInstance::acceptConnections);
}

std::unique_ptr<SingleInstance> SingleInstance::forUser() {
  const QString folder =
      QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/Quilmora");
  return std::make_unique<SingleInstance>(folder + QStringLiteral("/running.lock"),
                                          folder + QStringLiteral("/running.socket"));
}

SingleInstance::~SingleInstance() {
  // The socket goes first: who then still meets the lock waits for it instead of talking to nobody.
  m_server.close();
  if (m_lockDescriptor >= 0) ::close(m_lockDescriptor);
}

SingleInstance::Result SingleInstance::start(const QStringList& documents, int patienceMilliseconds) {
  const QByteArray message = encodeMessage(documents);
  const QDeadlineTimer deadline(patienceMilliseconds);
  // Again and again, because the other one may be just starting, or just ending.
  while (true) {
    const Lock lock = tryLock();
    if (lock == Lock::impossible) return Result::failed;
    if (lock == Lock::held) {
      listen();
      return Result::first;
    }
    if (message.size() - headerBytes > maxMessageBytes) {
      m_error = QStringLiteral("Too many documents for one start.");
      return Result::failed;
    }
    if (handOver(message, static_cast<int>(deadline.remainingTime()))) return Result::handedOver;
    if (deadline.hasExpired()) break;
    QThread::msleep(static_cast<unsigned long>(std::clamp<qint64>(deadline.remainingTime(), 0, retryMilliseconds)));
  }
  m_error = QStringLiteral(
      "Quilmora is already running but does not answer. Wait a moment or end that process, then start again.");
  return Result::failed;
}

// The kernel gives the lock back when its holder ends, however it ends, so a lock is never stale.
SingleInstance::Lock SingleInstance::tryLock() {
  if (m_lockDescriptor >= 0) return Lock::held;
  QDir().mkpath(QFileInfo(m_lockPath).path());
  const int descriptor =
      ::open(QFile::encodeName(m_lockPath).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
  if (descriptor >= 0 && ::flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
    m_lockDescriptor = descriptor;
    return Lock::held;
  }
  const int error = errno;
  if (descriptor >= 0) ::close(descriptor);
  if (error == EWOULDBLOCK) return Lock::taken;
  m_error = QStringLiteral("The lock “%1” cannot be had: %2.")
                .arg(m_lockPath, QString::fromStdString(std::system_category().message(error)));
  return Lock::impossible;
}

bool SingleInstance::handOver(const QByteArray& message, int patienceMilliseconds) {
  const QDeadlineTimer deadline(patienceMilliseconds);
  const auto remaining = [&] { return static_cast<int>(std::max<qint64>(deadline.remainingTime(), 1)); };
  QLocalSocket socket;
  socket.connectToServer(m_socketPath);
  if (!socket.waitForConnected(remaining())) return false;
  socket.write(message);
  while (socket.bytesToWrite() > 0) {
    if (!socket.waitForBytesWritten(remaining())) return false;
  }
  while (socket.bytesAvailable() == 0) {
    if (!socket.waitForReadyRead(remaining())) return false;
  }
  return socket.read(1) == QByteArray(1, accepted);
}

// The lock is held, so a socket that stands there belongs to nobody any more.
void SingleInstance::listen() {
  if (m_server.isListening()) return;
  QDir().mkpath(QFileInfo(m_socketPath).path());
  QLocalServer::removeServer(m_socketPath);
  if (!m_server.listen(m_socketPath)) {
    m_error = QStringLiteral("Later starts cannot reach this one: ") + m_server.errorString();
  }
}

void SingleInstance::acceptConnections() {
  while (QLocalSocket* socket = m_server.nextPendingConnection()) {
    if (m_connectionCount >= maxConnections) {
      delete socket;
      continue;
    }
    ++m_connectionCount;
    socket->setReadBufferSize(headerBytes + maxMessageBytes + 1);
    connect(socket, &QObject::destroyed, this, [this] { --m_connectionCount; });
    connect(socket, &QLocalSocket::readyRead, this, [this, socket] { readFrom(socket); });
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    QTimer::singleShot(senderPatienceMilliseconds, socket, [socket] { socket->abort(); });
    if (socket->state() == QLocalSocket::UnconnectedState) socket->deleteLater();
    readFrom(socket);
  }
}

void SingleInstance::readFrom(QLocalSocket* socket) {
  const QByteArray received = socket->peek(headerBytes + maxMessageBytes + 1);
  if (isMisbegun(received)) {
    socket->abort();
    return;
  }
  if (!isWhole(received)) return;
  const std::optional<QStringList> paths = decodeMessage(received);
  if (!paths) {
    socket->abort();
    return;
  }
  disconnect(socket, &QLocalSocket::readyRead, this, nullptr);
  socket->write(QByteArray(1, accepted));
  socket->flush();
  socket->disconnectFromServer();
  // Later, because opening a document takes its time and may show a dialog.
  QTimer::singleShot(0, this, [this, paths] { Q_EMIT documentsReceived(*paths); });
}

}  // namespace quilmora
