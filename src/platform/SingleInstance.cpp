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
#include <sys/stat.h>
#include <unistd.h>

#include "platform/Paths.h"

namespace quilmora {

namespace {

// A message: these bytes, the length of the rest as 32 bits, then the paths in UTF-8, each ended by a null character.
// The answer is one byte.
const QByteArray greeting = QByteArrayLiteral("QLMR1");
constexpr qsizetype headerBytes = 5 + 4;
constexpr char accepted = '+';
constexpr int senderTimeoutMilliseconds = 3000;
constexpr int retryMilliseconds = 50;
// Leaves room for the folder in which the server creates its socket.
constexpr qsizetype maxSocketPathLength = 90;

QByteArray encodeMessage(const QStringList& paths) {
  QByteArray body;
  for (const QString& path : paths) body += bytesFromPath(QDir::current().absoluteFilePath(path)) + '\0';
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
    const QString path = pathFromBytes(bytes);
    if (!path.startsWith(u'/')) return std::nullopt;
    paths.append(path);
    start = end + 1;
  }
  return paths;
}

bool isWritable(const QString& folder) {
  QDir().mkpath(folder);
  return ::access(QFile::encodeName(folder).constData(), W_OK | X_OK) == 0;
}

// A folder that belongs to this user alone, or an empty text: in a shared place somebody else may have created it.
QString privateFolder(const QString& path) {
  const QByteArray bytes = QFile::encodeName(path);
  ::mkdir(bytes.constData(), 0700);
  struct stat status {};
  const bool isOwn = ::lstat(bytes.constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
                     status.st_uid == ::geteuid() && (status.st_mode & 077) == 0;
  return isOwn ? path : QString();
}

QString folderForUser() {
  const QString settings =
      QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/Quilmora");
  if (isWritable(settings)) return settings;
  if (const QString session = qEnvironmentVariable("XDG_RUNTIME_DIR"); session.startsWith(u'/'))
    if (const QString folder = privateFolder(session + QStringLiteral("/Quilmora")); !folder.isEmpty()) return folder;
  const QString shared = QStringLiteral("/tmp/Quilmora-%1").arg(::geteuid());
  const QString folder = privateFolder(shared);
  return folder.isEmpty() ? settings : folder;
}

}  // namespace

SingleInstance::SingleInstance(QString lockPath, QString socketPath, QObject* parent)
    : QObject(parent), m_lockPath(std::move(lockPath)), m_socketPath(std::move(socketPath)) {
  m_server.setSocketOptions(QLocalServer::UserAccessOption);
  m_server.setMaxPendingConnections(maxConnections);
  connect(&m_server, &QLocalServer::newConnection, this, &SingleInstance::acceptConnections);
}

std::unique_ptr<SingleInstance> SingleInstance::forUser() {
  const QString folder = folderForUser();
  return std::make_unique<SingleInstance>(folder + QStringLiteral("/running.lock"),
                                          folder + QStringLiteral("/running.socket"));
}

SingleInstance::~SingleInstance() {
  // The socket is closed first: a start that still finds the lock then waits for it instead of talking to nobody.
  m_server.close();
  if (m_lockDescriptor >= 0) ::close(m_lockDescriptor);
  if (m_socketFolder >= 0) ::close(m_socketFolder);
}

SingleInstance::Result SingleInstance::start(const QStringList& documents, int timeoutMilliseconds) {
  const QByteArray message = encodeMessage(documents);
  const QDeadlineTimer deadline(timeoutMilliseconds);
  // In a loop, because the other one may be just starting or just ending.
  while (true) {
    const Lock lock = tryLock();
    // If no lock can be had on this machine, no second editor can hold one either.
    if (lock == Lock::impossible) return Result::first;
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

// The kernel releases the lock when its holder ends, however it ends, so a lock is never stale.
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
  m_error = QStringLiteral("Another Quilmora that is started beside this one would not be noticed: “%1”: %2.")
                .arg(m_lockPath, QString::fromStdString(std::system_category().message(error)));
  return Lock::impossible;
}

// The system limits a socket's path to about a hundred bytes, so a longer one goes through the open folder.
QString SingleInstance::reachableSocketPath() {
  const QByteArray path = QFile::encodeName(m_socketPath);
  if (path.size() <= maxSocketPathLength) return m_socketPath;
  const qsizetype slash = path.lastIndexOf('/');
  if (m_socketFolder < 0) m_socketFolder = ::open(path.left(slash).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC);
  return QStringLiteral("/proc/self/fd/%1").arg(m_socketFolder) + QFile::decodeName(path.mid(slash));
}

bool SingleInstance::handOver(const QByteArray& message, int timeoutMilliseconds) {
  const QDeadlineTimer deadline(timeoutMilliseconds);
  const auto remaining = [&] { return static_cast<int>(std::max<qint64>(deadline.remainingTime(), 1)); };
  QLocalSocket socket;
  socket.connectToServer(reachableSocketPath());
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

// We hold the lock, so an existing socket belongs to nobody any more.
void SingleInstance::listen() {
  if (m_server.isListening()) return;
  QDir().mkpath(QFileInfo(m_socketPath).path());
  const QString path = reachableSocketPath();
  QLocalServer::removeServer(path);
  if (!m_server.listen(path)) {
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
    QTimer::singleShot(senderTimeoutMilliseconds, socket, [socket] { socket->abort(); });
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
  // Later, because opening a document takes time and may show a dialog.
  QTimer::singleShot(0, this, [this, paths] { Q_EMIT documentsReceived(*paths); });
}

}  // namespace quilmora
