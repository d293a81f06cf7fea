#pragma once

#include <memory>

#include <QObject>

#include "platform/OnDeviceModel.h"

namespace quilmora {

class HttpTransport;
class SettingsStore;
struct HttpReply;

// A model server on the loopback address, such as many people run on their desktop. Looks at the usual ports, or at the
// address in the settings, and uses the first model it finds, or the one named in the settings. Other machines are
// accepted only with https.
class LocalModelServer final : public QObject, public OnDeviceModel {
  Q_OBJECT

 public:
  // Where to look for servers, and how each lists its models.
  struct Place {
    QUrl address;
    QString list;  // "/api/tags" or "/v1/models"
  };
  static std::vector<Place> usualPlaces();

  // Both must outlive it.
  LocalModelServer(HttpTransport& transport, const SettingsStore& settings, std::vector<Place> places = usualPlaces());

  QFuture<bool> lookUp() override;
  std::optional<bool> isThere() const override { return m_isThere; }
  QUrl address() const override { return m_server.address; }
  QFuture<QString> respond(const QString& prompt) override;

  // The name of the model in use; empty without one.
  const QString& modelName() const { return m_server.model; }

 private:
  struct Server {
    QUrl address;
    QString model;
  };
  struct Look;

  std::vector<Place> placesToLook() const;
  void placeAnswered(const std::shared_ptr<Look>& look, std::size_t index, const QString& model);

  HttpTransport& m_transport;
  const SettingsStore& m_settings;
  std::vector<Place> m_usualPlaces;
  std::optional<bool> m_isThere;
  Server m_server;
};

// The address in a settings text, or nothing if it is invalid or names another machine without https.
std::optional<QUrl> modelServerAddress(const QString& text);

// The names in a server's list of models, in order, for either kind of list. Empty for anything else.
std::vector<QString> modelNames(const QByteArray& list);

}  // namespace quilmora
