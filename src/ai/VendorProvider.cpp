#include "ai/VendorProvider.h"

#include <QJsonDocument>

#include "ai/ProviderCall.h"
#include "ai/VendorReply.h"

namespace quilmora {

VendorProvider::VendorProvider(HttpTransport& transport, QString apiKey, QString host, Replies replies)
    : m_transport(transport), m_apiKey(std::move(apiKey)), m_host(std::move(host)), m_replies(replies) {}

QFuture<AIResponse> VendorProvider::generate(const AIRequest& request, const Cancellation& cancellation) {
  return ask<AIResponse>(generateBody(request), cancellation, [replies = m_replies](const QByteArray& body) {
    return AIResponse{parseTreeReply(replies.text(body), replies.variant), bodyText(body)};
  });
}

QFuture<QString> VendorProvider::chat(const std::vector<ChatMessage>& messages, const QString& mapContext,
                                      const Cancellation& cancellation) {
  return ask<QString>(chatBody(messages, mapContext), cancellation, m_replies.text);
}

template <class Result, class Read>
QFuture<Result> VendorProvider::ask(const QJsonObject& body, const Cancellation& cancellation, Read read) {
  if (m_apiKey.isEmpty()) return failedCall<Result>(AIProviderError::noAPIKey());
  HttpRequest request;
  request.url = QUrl(QStringLiteral("https://") + m_host + path());
  request.headers = headers(keyHeader(m_apiKey));
  request.body = QJsonDocument(body).toJson(QJsonDocument::Compact);
  const auto readReply = [key = m_apiKey, read](const HttpReply& reply) { return read(acceptedBody(reply, key)); };
  return providerCall<Result>(m_transport.send(request), cancellation, readReply, vendorFailure);
}

QJsonObject VendorProvider::message(const QString& role, const QString& content) {
  return {{QStringLiteral("role"), role}, {QStringLiteral("content"), content}};
}

QJsonArray VendorProvider::dialogue(const std::vector<ChatMessage>& messages) {
  QJsonArray told;
  for (const ChatMessage& each : messages) told.append(message(rawValue(each.role), each.content));
  return told;
}

}  // namespace quilmora
