#include "platform/LocalModelServer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "platform/Futures.h"
#include "platform/HttpTransport.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

namespace {

using namespace std::chrono_literals;

constexpr auto lookTime = 300ms;
// Without a graphics card a model needs this long for a map; the chat can be stopped.
constexpr auto answerTime = 10min;
constexpr qsizetype maxListSize = 1024 * 1024;
constexpr qsizetype shownErrorSize = 200;

const QString byTags = QStringLiteral("/api/tags");
const QString byModels = QStringLiteral("/v1/models");

QUrl under(QUrl address, const QString& path) {
  QString base = address.path();
  while (base.endsWith(u'/')) base.chop(1);
  address.setPath(base + path);
  return address;
}

// A name without a tag means its "latest".
bool isWanted(const QString& name, const QString& wanted) {
  return wanted.isEmpty() || name == wanted || name == wanted + QStringLiteral(":latest");
}

QString replyText(const HttpReply& reply) {
  const QString shown = QString::fromUtf8(reply.body).left(shownErrorSize);
  if (reply.status == 503 || reply.status == 404)
    throw OnDeviceError(QStringLiteral("The local model is not available: HTTP %1: %2").arg(reply.status).arg(shown));
  if (reply.status != 200) throw OnDeviceError(QStringLiteral("HTTP %1: %2").arg(reply.status).arg(shown));
  const QJsonValue text =
      QJsonDocument::fromJson(reply.body).object()[u"choices"][0].toObject()[u"message"].toObject()[u"content"];
  if (!text.isString()) throw OnDeviceError(QStringLiteral("The model server's reply holds no text."));
  return text.toString();
}

}  // namespace

std::vector<QString> modelNames(const QByteArray& list) {
  const QJsonObject root = QJsonDocument::fromJson(list).object();
  std::vector<QString> names;
  const auto collect = [&](QLatin1String array, QLatin1String key) {
    for (const auto& model : root[array].toArray())
      if (const QString name = model.toObject()[key].toString(); !name.isEmpty()) names.push_back(name);
  };
  collect(QLatin1String("data"), QLatin1String("id"));
  if (names.empty()) collect(QLatin1String("models"), QLatin1String("name"));
  return names;
}

std::optional<QUrl> modelServerAddress(const QString& text) {
  QUrl address(text.trimmed(), QUrl::StrictMode);
  address.setQuery(QString());
  address.setFragment(QString());
  const bool isTaken =
      address.scheme() == QLatin1String("https") || (address.scheme() == QLatin1String("http") && isLoopback(address));
  if (!address.isValid() || address.host().isEmpty() || !isTaken) return std::nullopt;
  return address;
}

struct LocalModelServer::Look {
  std::vector<Place> places;
  std::vector<std::optional<QString>> models;  // empty if a place has none
  QPromise<bool> promise;
  bool isOver = false;
};

std::vector<LocalModelServer::Place> LocalModelServer::usualPlaces() {
  return {{QUrl(QStringLiteral("http://127.0.0.1:11434")), byTags},
          {QUrl(QStringLiteral("http://127.0.0.1:8080")), byModels}};
}

LocalModelServer::LocalModelServer(HttpTransport& transport, const SettingsStore& settings, std::vector<Place> places)
    : m_transport(transport), m_settings(settings), m_usualPlaces(std::move(places)) {}

std::vector<LocalModelServer::Place> LocalModelServer::placesToLook() const {
  const QString chosen = m_settings.text(settings::localModelAddress).value_or(QString()).trimmed();
  if (chosen.isEmpty()) return m_usualPlaces;
  const std::optional<QUrl> address = modelServerAddress(chosen);
  if (!address) return {};
  return {{*address, byModels}, {*address, byTags}};
}

QFuture<bool> LocalModelServer::lookUp() {
  const auto look = std::make_shared<Look>();
  look->places = placesToLook();
  look->models.resize(look->places.size());
  look->promise.start();
  const QString wanted = m_settings.text(settings::localModelName).value_or(QString()).trimmed();
  for (std::size_t index = 0; index < look->places.size(); ++index) {
    HttpRequest request;
    request.method = "GET";
    request.url = under(look->places[index].address, look->places[index].list);
    request.timeout = lookTime;
    request.maxReplySize = maxListSize;
    const auto answered = [this, look, index, wanted](const HttpReply& reply) {
      QString found;
      if (reply.status == 200)
        for (const QString& name : modelNames(reply.body))
          if (found.isEmpty() && isWanted(name, wanted)) found = name;
      placeAnswered(look, index, found);
    };
    whenFinished(m_transport.send(request), this, answered,
                 [this, look, index](const std::exception&) { placeAnswered(look, index, {}); });
  }
  QFuture<bool> future = look->promise.future();
  if (look->places.empty()) placeAnswered(look, 0, {});
  return future;
}

// The first place in the order counts, not the fastest.
void LocalModelServer::placeAnswered(const std::shared_ptr<Look>& look, std::size_t index, const QString& model) {
  if (look->isOver) return;
  if (index < look->models.size()) look->models[index] = model;
  Server server;
  for (std::size_t i = 0; i < look->models.size() && server.model.isEmpty(); ++i) {
    if (!look->models[i]) return;  // an earlier place may still have one
    server = {look->places[i].address, *look->models[i]};
  }
  look->isOver = true;
  if (server.model.isEmpty()) server = {};
  m_server = server;
  m_isThere = !server.model.isEmpty();
  look->promise.addResult(*m_isThere);
  look->promise.finish();
}

QFuture<QString> LocalModelServer::respond(const QString& prompt) {
  if (!m_isThere.value_or(false))
    return QtFuture::makeExceptionalFuture<QString>(
        std::make_exception_ptr(OnDeviceError(QStringLiteral("The local model is not available: no server answers."))));
  HttpRequest request;
  request.url = under(m_server.address, QStringLiteral("/v1/chat/completions"));
  request.headers = {{"Content-Type", "application/json"}};
  const QJsonObject message{{QStringLiteral("role"), QStringLiteral("user")}, {QStringLiteral("content"), prompt}};
  request.body = QJsonDocument(QJsonObject{{QStringLiteral("model"), m_server.model},
                                           {QStringLiteral("messages"), QJsonArray{message}}})
                     .toJson(QJsonDocument::Compact);
  request.timeout = answerTime;
  const auto promise = std::make_shared<QPromise<QString>>();
  promise->start();
  QFuture<HttpReply> reply = m_transport.send(request);
  auto* stop = new QFutureWatcher<QString>(this);
  connect(stop, &QFutureWatcherBase::canceled, this, [reply]() mutable { reply.cancel(); });
  connect(stop, &QFutureWatcherBase::finished, stop, &QObject::deleteLater);
  stop->setFuture(promise->future());
  const auto done = [promise](const HttpReply& answer) {
    try {
      promise->addResult(replyText(answer));
    } catch (...) {
      promise->setException(std::current_exception());
    }
    promise->finish();
  };
  whenFinished(reply, this, done, [promise](const std::exception& error) {
    const auto* failure = dynamic_cast<const HttpError*>(&error);
    if (failure && failure->kind() == HttpError::Kind::connection) {
      promise->setException(std::make_exception_ptr(
          OnDeviceError(QStringLiteral("The local model is not available: ") + QString::fromUtf8(failure->what()))));
    } else {
      promise->setException(std::current_exception());
    }
    promise->finish();
  });
  return promise->future();
}

}  // namespace quilmora
