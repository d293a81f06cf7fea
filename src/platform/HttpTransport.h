#pragma once

#include <chrono>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

#include <QByteArray>
#include <QFuture>
#include <QPromise>
#include <QUrl>

namespace quilmora {

struct HttpRequest {
  QByteArray method = "POST";
  QUrl url;
  std::vector<std::pair<QByteArray, QByteArray>> headers;
  QByteArray body;
  std::chrono::milliseconds timeout = std::chrono::seconds(60);  // from the call to the last byte of the reply
  qsizetype maxReplySize = 32 * 1024 * 1024;                     // of the body, in bytes
};

struct HttpReply {
  int status = 0;
  QByteArray body;
};

// Why there is no reply. Never contains a header or a body.
class HttpError : public std::runtime_error {
 public:
  enum class Kind { notAllowed, connection, certificate, timedOut, tooLarge, compressed, notHttp };

  HttpError(Kind kind, const QString& message) : std::runtime_error(message.toStdString()), m_kind(kind) {}
  Kind kind() const { return m_kind; }

 private:
  Kind m_kind;
};

// Sends requests. A reply with any status is a reply; redirects are not followed. Plain HTTP is allowed only to this
// machine.
class HttpTransport {
 public:
  virtual ~HttpTransport() = default;
  // Ends on the main thread with the whole reply or an HttpError. Cancelling the future stops the exchange.
  virtual QFuture<HttpReply> send(const HttpRequest& request) = 0;
};

// Whether the address names this machine: localhost, 127.0.0.0/8 or ::1.
bool isLoopback(const QUrl& url);

// Keeps what is sent; tests answer.
class MemoryHttpTransport final : public HttpTransport {
 public:
  QFuture<HttpReply> send(const HttpRequest& request) override;

  std::size_t count() const { return m_exchanges.size(); }
  const HttpRequest& request(std::size_t index) const { return m_exchanges.at(index).request; }
  bool isCancelled(std::size_t index) const { return m_exchanges.at(index).promise.isCanceled(); }
  void answer(std::size_t index, HttpReply reply);
  void fail(std::size_t index, const HttpError& error);
  // From now on answers every request with this at once, without a call of answer().
  void answerAll(HttpReply reply) { m_standingReply = std::move(reply); }

 private:
  struct Exchange {
    HttpRequest request;
    QPromise<HttpReply> promise;
  };
  std::vector<Exchange> m_exchanges;
  std::optional<HttpReply> m_standingReply;
};

}  // namespace quilmora
