#pragma once

#include <memory>
#include <optional>

#include <QNetworkAccessManager>
#include <QObject>
#include <QSslConfiguration>

#include "platform/HttpTransport.h"

namespace quilmora {

// The real one, over Qt's network. Certificate errors are failures, and the desktop's proxies hold for every host but
// this machine. Nothing is cached, no cookie is kept, and no compressed reply is taken, so that the limit of a reply
// holds for what is unpacked too. Destroying it drops what is under way.
class NetworkTransport final : public QObject, public HttpTransport {
  Q_OBJECT

 public:
  // Without a configuration, the desktop's own certificates hold; they are read at the first secure request.
  explicit NetworkTransport(std::optional<QSslConfiguration> tls = std::nullopt);
  ~NetworkTransport() override;
  QFuture<HttpReply> send(const HttpRequest& request) override;

 private:
  std::optional<QSslConfiguration> m_tls;
  std::unique_ptr<QNetworkAccessManager> m_network;  // made when it is first needed
};

}  // namespace quilmora
