#include "support/WebServer.h"

#include <QFile>
#include <QHostAddress>
#include <QProcess>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslServer>
#include <QTemporaryDir>
#include <QUrl>

namespace {

struct Identity {
  QSslCertificate certificate;
  QSslKey key;
};

QByteArray fileText(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Made once per test program; nobody else trusts it.
const Identity& identity() {
  static const Identity made = [] {
    const QTemporaryDir folder;
    const QString key = folder.filePath(QStringLiteral("key.pem"));
    const QString certificate = folder.filePath(QStringLiteral("certificate.pem"));
    QProcess openssl;
    openssl.start(QStringLiteral("openssl"),
                  {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"), QStringLiteral("ec"),
                   QStringLiteral("-pkeyopt"), QStringLiteral("ec_paramgen_curve:prime256v1"), QStringLiteral("-nodes"),
                   QStringLiteral("-keyout"), key, QStringLiteral("-out"), certificate, QStringLiteral("-days"),
                   QStringLiteral("2"), QStringLiteral("-subj"), QStringLiteral("/CN=localhost"),
                   QStringLiteral("-addext"), QStringLiteral("subjectAltName=IP:127.0.0.1,DNS:localhost")});
    if (!openssl.waitForFinished()) qFatal("openssl does not run");
    return Identity{QSslCertificate(fileText(certificate)), QSslKey(fileText(key), QSsl::Ec)};
  }();
  return made;
}

}  // namespace

WebServer::WebServer(Security security) : m_security(security) {
  if (security == Security::tls) {
    auto server = std::make_unique<QSslServer>();
    QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
    tls.setLocalCertificate(identity().certificate);
    tls.setPrivateKey(identity().key);
    server->setSslConfiguration(tls);
    m_server = std::move(server);
  } else {
    m_server = std::make_unique<QTcpServer>();
  }
  connect(m_server.get(), &QTcpServer::pendingConnectionAvailable, this, [this] {
    while (QTcpSocket* socket = m_server->nextPendingConnection()) accept(socket);
  });
  if (!m_server->listen(QHostAddress::LocalHost)) qFatal("no loopback port is free");
}

WebServer::~WebServer() = default;

QString WebServer::host() const {
  return QStringLiteral("127.0.0.1:%1").arg(m_server->serverPort());
}

QUrl WebServer::url(const QString& path) const {
  const QString scheme = m_security == Security::tls ? QStringLiteral("https://") : QStringLiteral("http://");
  return QUrl(scheme + host() + path);
}

QSslConfiguration WebServer::clientConfiguration() {
  QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
  tls.setCaCertificates({identity().certificate});
  return tls;
}

QByteArray WebServer::reply(int status, const QByteArray& body, const QByteArray& moreHeaders) {
  return "HTTP/1.1 " + QByteArray::number(status) + " Told\r\nContent-Length: " + QByteArray::number(body.size()) +
         "\r\nConnection: close\r\n" + moreHeaders + "\r\n" + body;
}

void WebServer::answerWith(int status, const QByteArray& body, const QByteArray& moreHeaders) {
  answerRaw(reply(status, body, moreHeaders), true);
}

void WebServer::answerRaw(const QByteArray& bytes, bool hangsUp) {
  onRequest = [bytes, hangsUp](QTcpSocket& socket, const Request&) {
    socket.write(bytes);
    if (hangsUp) socket.disconnectFromHost();
  };
}

void WebServer::accept(QTcpSocket* socket) {
  ++m_connectionCount;
  ++m_openConnectionCount;
  connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
    --m_openConnectionCount;
    socket->deleteLater();
  });
  const auto received = std::make_shared<QByteArray>();
  connect(socket, &QTcpSocket::readyRead, this, [this, socket, received] { read(socket, *received); });
  if (onConnection) onConnection(*socket);
  if (socket->bytesAvailable() > 0) read(socket, *received);
}

void WebServer::read(QTcpSocket* socket, QByteArray& received) {
  received += socket->readAll();
  const qsizetype end = received.indexOf("\r\n\r\n");
  if (end < 0) return;
  const QList<QByteArray> lines = received.left(end).split('\n');
  Request request;
  request.line = lines.front().trimmed();
  for (const QByteArray& line : lines.mid(1)) {
    const qsizetype colon = line.indexOf(':');
    request.headers[line.left(colon).toLower()] = line.mid(colon + 1).trimmed();
  }
  const qsizetype length = request.headers["content-length"].toLongLong();
  if (received.size() < end + 4 + length) return;
  request.body = received.mid(end + 4, length);
  received.remove(0, end + 4 + length);
  m_requests.push_back(request);
  if (onRequest) onRequest(*socket, request);
}
