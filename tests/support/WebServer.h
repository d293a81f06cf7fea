#pragma once

#include <functional>
#include <map>
#include <memory>
#include <vector>

#include <QSslConfiguration>
#include <QTcpServer>
#include <QTcpSocket>

// A web server on the loopback address, with a certificate of its own that only clientConfiguration() trusts. The test
// decides what it answers, and how badly.
class WebServer : public QObject {
 public:
  enum class Security { plain, tls };

  struct Request {
    QByteArray line;                           // "POST /v1/messages HTTP/1.1"
    std::map<QByteArray, QByteArray> headers;  // by name in lower case
    QByteArray body;
  };

  explicit WebServer(Security security = Security::tls);
  ~WebServer() override;

  // What to do once a complete request has arrived. By default nothing: the client waits.
  std::function<void(QTcpSocket&, const Request&)> onRequest;
  // What to do at the start of a connection, after the handshake if there is one.
  std::function<void(QTcpSocket&)> onConnection;

  // Answers each request with this and closes the connection.
  void answerWith(int status, const QByteArray& body, const QByteArray& moreHeaders = {});
  // Sends these bytes as they are, and then closes the connection if `hangsUp`.
  void answerRaw(const QByteArray& bytes, bool hangsUp);

  QString host() const;  // "127.0.0.1:40123"
  QUrl url(const QString& path) const;
  const std::vector<Request>& requests() const { return m_requests; }
  int connectionCount() const { return m_connectionCount; }
  int openConnectionCount() const { return m_openConnectionCount; }

  // For a client that trusts this kind of server.
  static QSslConfiguration clientConfiguration();
  // A complete reply with its length.
  static QByteArray reply(int status, const QByteArray& body, const QByteArray& moreHeaders = {});

 private:
  void accept(QTcpSocket* socket);
  void read(QTcpSocket* socket, QByteArray& received);

  Security m_security;
  std::unique_ptr<QTcpServer> m_server;
  std::vector<Request> m_requests;
  int m_connectionCount = 0;
  int m_openConnectionCount = 0;
};
