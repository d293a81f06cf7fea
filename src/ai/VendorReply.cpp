#include "ai/VendorReply.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "ai/AIProviderError.h"

namespace quilmora {

namespace {

constexpr qsizetype minSecretSize = 6;

// An array's first element, as an object; empty if there is none.
QJsonObject first(const QJsonValue& array) {
  return array.toArray().at(0).toObject();
}

QString textOrBody(const QJsonValue& text, const QByteArray& body) {
  return text.isString() ? text.toString() : bodyText(body);
}

}  // namespace

QString bodyText(const QByteArray& body) {
  return body.isValidUtf8() ? QString::fromUtf8(body) : QString();
}

QByteArray withoutKey(QByteArray text, const QString& apiKey) {
  const QString secret = apiKey.trimmed();
  if (secret.size() < minSecretSize) return text;
  // The key as it is, and as it would be escaped in JSON.
  const QByteArray quoted = QJsonDocument(QJsonArray{secret}).toJson(QJsonDocument::Compact);
  return text.replace(secret.toUtf8(), "[key]").replace(quoted.mid(2, quoted.size() - 4), "[key]");
}

QByteArray acceptedBody(const HttpReply& reply, const QString& apiKey) {
  if (reply.status == 401) throw AIProviderError::authenticationFailed();
  if (reply.status == 429) throw AIProviderError::rateLimited();
  const QByteArray body = withoutKey(reply.body, apiKey);
  if (reply.status != 200)
    throw AIProviderError::invalidResponse(QStringLiteral("HTTP %1: ").arg(reply.status) + bodyText(body));
  return body;
}

QString claudeReplyText(const QByteArray& body) {
  const QJsonObject root = QJsonDocument::fromJson(body).object();
  return textOrBody(first(root[u"content"])[u"text"], body);
}

QString openAIReplyText(const QByteArray& body) {
  const QJsonObject root = QJsonDocument::fromJson(body).object();
  return textOrBody(first(root[u"choices"])[u"message"].toObject()[u"content"], body);
}

std::exception_ptr vendorFailure(const std::exception& error) {
  const auto* transport = dynamic_cast<const HttpError*>(&error);
  if (transport && transport->kind() == HttpError::Kind::notHttp)
    return std::make_exception_ptr(AIProviderError::networkError(QString::fromUtf8(transport->what())));
  return std::current_exception();
}

QByteArray keyHeader(const QString& apiKey) {
  const QString trimmed = apiKey.trimmed();
  return (trimmed.isEmpty() ? apiKey.simplified() + u' ' : trimmed).toUtf8();
}

}  // namespace quilmora
