#pragma once

#include <memory>
#include <optional>

#include <QNetworkAccessManager>
#include <QObject>
#include <QSslConfiguration>

#include "platform/HttpTransport.h"

namespace quilmora {

// The real transport, over Qt's network. Certificate errors are failures, and the desktop's proxies apply to every host
// but this machine. Nothing is cached, no cookie is kept, and compressed replies are refused, so that the size limit
// holds for unpacked data too. Destroying it drops pending requests.
class NetworkTransport final : public QObject, public HttpTransport {
  Q_OBJECT

 public:
  // Without a configuration, the desktop's own certificates are used; they are read at the first secure request.
  explicit NetworkTransport(std::optional<QSslConfiguration> tls = std::nullopt);
  ~NetworkTransport() override;
  QFuture<HttpReply> send(const HttpRequest& request) override;

 private:
  std::optional<QSslConfiguration> m_tls;
  std::unique_ptr<QNetworkAccessManager> m_network;  // created when first needed
};

}  // namespace quilmora
