#include "platform/HttpTransport.h"

#include <QHostAddress>

namespace quilmora {

bool isLoopback(const QUrl& url) {
  const QString host = url.host();
  return host.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0 || QHostAddress(host).isLoopback();
}

QFuture<HttpReply> MemoryHttpTransport::send(const HttpRequest& request) {
  m_exchanges.push_back({request, {}});
  m_exchanges.back().promise.start();
  QFuture<HttpReply> future = m_exchanges.back().promise.future();
  if (m_standingReply) answer(m_exchanges.size() - 1, *m_standingReply);
  return future;
}

void MemoryHttpTransport::answer(std::size_t index, HttpReply reply) {
  QPromise<HttpReply>& promise = m_exchanges.at(index).promise;
  promise.addResult(std::move(reply));
  promise.finish();
}

void MemoryHttpTransport::fail(std::size_t index, const HttpError& error) {
  QPromise<HttpReply>& promise = m_exchanges.at(index).promise;
  promise.setException(std::make_exception_ptr(error));
  promise.finish();
}

}  // namespace quilmora
