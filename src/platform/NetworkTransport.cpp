#include "platform/NetworkTransport.h"

#include <algorithm>

#include <QFutureWatcher>
#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QTimer>

namespace quilmora {

namespace {

// How many bytes the network may buffer beyond what has been read from it.
constexpr qint64 readAhead = 1024 * 1024;

// The body of a request, which can be read only once: Qt would send it again, up to three times, if the connection is
// lost before the reply begins, and by then the vendor may have done the work.
class BodyOnce final : public QIODevice {
 public:
  BodyOnce(QByteArray body, QObject* parent) : QIODevice(parent), m_body(std::move(body)) {
    open(ReadOnly | Unbuffered);
  }
  qint64 size() const override { return m_body.size(); }

 protected:
  qint64 readData(char* data, qint64 maxSize) override {
    if (pos() < m_position) return -1;
    const qint64 count = std::min<qint64>(maxSize, m_body.size() - m_position);
    std::copy_n(m_body.constData() + m_position, count, data);
    m_position += count;
    return count;
  }
  qint64 writeData(const char*, qint64) override { return -1; }

 private:
  const QByteArray m_body;
  qint64 m_position = 0;
};

class Proxies final : public QNetworkProxyFactory {
 public:
  QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override {
    if (isLoopback(query.url())) return {QNetworkProxy::NoProxy};
    return systemProxyForQuery(query);
  }
};

bool holdsControlCharacter(const QByteArray& text) {
  return std::any_of(text.begin(), text.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 0x20 && byte != '\t') || byte == 0x7F;
  });
}

// Why the request may not be sent, or an empty text.
QString refusal(const HttpRequest& request) {
  const bool isSecure = request.url.scheme() == QLatin1String("https");
  const bool isLocal = request.url.scheme() == QLatin1String("http") && isLoopback(request.url);
  if (!request.url.isValid() || request.url.host().isEmpty() || !(isSecure || isLocal))
    return QStringLiteral("The address is not a secure one.");
  for (const auto& [name, value] : request.headers)
    if (holdsControlCharacter(name) || holdsControlCharacter(value))
      return QStringLiteral("A header of the request holds a control character.");
  return {};
}

QNetworkRequest networkRequest(const HttpRequest& request, const std::optional<QSslConfiguration>& tls) {
  QNetworkRequest result(request.url);
  for (const auto& [name, value] : request.headers) result.setRawHeader(name, value);
  result.setRawHeader("Accept-Encoding", "identity");
  result.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Quilmora/" QUILMORA_VERSION));
  result.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
  result.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
  result.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
  result.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
  result.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  if (tls) result.setSslConfiguration(*tls);
  return result;
}

// An error that Qt derives from a status is not one here: the reply came.
bool isStatusAlone(QNetworkReply::NetworkError error) {
  if (error == QNetworkReply::ContentReSendError) return false;
  return (error > 200 && error < 300) || error == QNetworkReply::ProtocolInvalidOperationError || error > 400;
}

// One request and its reply. Deletes itself.
class Exchange final : public QObject {
 public:
  Exchange(QNetworkAccessManager& network, const HttpRequest& request, const std::optional<QSslConfiguration>& tls,
           QObject* parent)
      : QObject(parent), m_maxReplySize(request.maxReplySize) {
    m_promise.start();
    connect(&m_watcher, &QFutureWatcherBase::canceled, this, [this] { end(); });
    m_watcher.setFuture(m_promise.future());
    connect(&m_deadline, &QTimer::timeout, this,
            [this] { fail(HttpError::Kind::timedOut, QStringLiteral("The request timed out.")); });
    m_deadline.setSingleShot(true);
    m_deadline.setTimerType(Qt::PreciseTimer);
    m_deadline.start(request.timeout);
    QIODevice* body = request.body.isEmpty() ? nullptr : new BodyOnce(request.body, this);
    m_reply = network.sendCustomRequest(networkRequest(request, tls), request.method, body);
    m_reply->setParent(this);
    m_reply->setReadBufferSize(readAhead);
    connect(m_reply, &QNetworkReply::readyRead, this, &Exchange::readAvailable);
    connect(m_reply, &QNetworkReply::finished, this, &Exchange::replyFinished);
  }

  QFuture<HttpReply> future() { return m_promise.future(); }

 private:
  void readAvailable() {
    if (m_isOver) return;
    const QByteArray encoding = m_reply->rawHeader("Content-Encoding").trimmed().toLower();
    if (!encoding.isEmpty() && encoding != "identity") {
      fail(HttpError::Kind::compressed, QStringLiteral("The reply is compressed, which was not asked for."));
      return;
    }
    m_body += m_reply->readAll();
    if (m_body.size() > m_maxReplySize)
      fail(HttpError::Kind::tooLarge,
           QStringLiteral("The reply is larger than %1 MB.").arg(m_maxReplySize / (1024 * 1024)));
  }

  void replyFinished() {
    readAvailable();
    if (m_isOver) return;
    const QVariant status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    const QNetworkReply::NetworkError error = m_reply->error();
    if (error == QNetworkReply::SslHandshakeFailedError) {
      fail(HttpError::Kind::certificate, m_reply->errorString());
    } else if (error == QNetworkReply::ProtocolFailure || (error == QNetworkReply::NoError && !status.isValid())) {
      fail(HttpError::Kind::notHttp, QStringLiteral("The server's answer is not one of the web."));
    } else if (error != QNetworkReply::NoError && !(isStatusAlone(error) && status.isValid())) {
      fail(HttpError::Kind::connection, m_reply->errorString());
    } else {
      m_promise.addResult(HttpReply{status.toInt(), std::move(m_body)});
      end();
    }
  }

  void fail(HttpError::Kind kind, const QString& message) {
    if (m_isOver) return;
    m_promise.setException(std::make_exception_ptr(HttpError(kind, message)));
    end();
  }

  void end() {
    if (std::exchange(m_isOver, true)) return;
    m_deadline.stop();
    if (m_reply->isRunning()) m_reply->abort();
    m_promise.finish();
    deleteLater();
  }

  const qsizetype m_maxReplySize;
  QPromise<HttpReply> m_promise;
  QFutureWatcher<HttpReply> m_watcher;
  QTimer m_deadline;
  QNetworkReply* m_reply = nullptr;
  QByteArray m_body;
  bool m_isOver = false;
};

}  // namespace

NetworkTransport::NetworkTransport(std::optional<QSslConfiguration> tls) : m_tls(std::move(tls)) {}

// Replies must not outlive the network manager.
NetworkTransport::~NetworkTransport() {
  for (QObject* exchange : QObjectList(children())) delete exchange;
}

QFuture<HttpReply> NetworkTransport::send(const HttpRequest& request) {
  if (const QString reason = refusal(request); !reason.isEmpty())
    return QtFuture::makeExceptionalFuture<HttpReply>(
        std::make_exception_ptr(HttpError(HttpError::Kind::notAllowed, reason)));
  if (!m_network) {
    m_network = std::make_unique<QNetworkAccessManager>();
    m_network->setProxyFactory(new Proxies);
  }
  return (new Exchange(*m_network, request, m_tls, this))->future();
}

}  // namespace quilmora
