#include "ai/ClaudeProvider.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "ai/Prompts.h"
#include "ai/ProviderCall.h"
#include "ai/ReplyParsing.h"
#include "ai/VendorReply.h"

namespace quilmora {

namespace {

constexpr int maxTokens = 4096;

QJsonObject message(const QString& role, const QString& content) {
  return {{QStringLiteral("role"), role}, {QStringLiteral("content"), content}};
}

QJsonObject requestBody(const QString& model, const QString& system, const QJsonArray& messages) {
  return {{QStringLiteral("model"), model},
          {QStringLiteral("max_tokens"), maxTokens},
          {QStringLiteral("system"), system},
          {QStringLiteral("messages"), messages}};
}

}  // namespace

ClaudeProvider::ClaudeProvider(HttpTransport& transport, QString apiKey, QString host)
    : m_transport(transport), m_apiKey(std::move(apiKey)), m_host(std::move(host)) {}

QFuture<AIResponse> ClaudeProvider::generate(const AIRequest& request, const Cancellation& cancellation) {
  const QJsonArray messages{message(QStringLiteral("user"), userPrompt(request))};
  return ask<AIResponse>(
      requestBody(model(), systemPrompt(request), messages), cancellation, [](const QByteArray& body) {
        return AIResponse{parseTreeReply(claudeReplyText(body), ReplyVariant::claude), bodyText(body)};
      });
}

QFuture<QString> ClaudeProvider::chat(const std::vector<ChatMessage>& messages, const QString& mapContext,
                                      const Cancellation& cancellation) {
  QJsonArray told;
  for (const ChatMessage& each : messages) told.append(message(rawValue(each.role), each.content));
  return ask<QString>(requestBody(model(), chatPrompt() + mapContext, told), cancellation,
                      [](const QByteArray& body) { return claudeReplyText(body); });
}

template <class Result, class Read>
QFuture<Result> ClaudeProvider::ask(const QJsonObject& body, const Cancellation& cancellation, Read read) {
  if (m_apiKey.isEmpty()) return failedCall<Result>(AIProviderError::noAPIKey());
  HttpRequest request;
  request.url = QUrl(QStringLiteral("https://") + m_host + QStringLiteral("/v1/messages"));
  request.headers = {
      {"content-type", "application/json"}, {"x-api-key", keyHeader(m_apiKey)}, {"anthropic-version", "2023-06-01"}};
  request.body = QJsonDocument(body).toJson(QJsonDocument::Compact);
  const auto readReply = [key = m_apiKey, read](const HttpReply& reply) { return read(acceptedBody(reply, key)); };
  return providerCall<Result>(m_transport.send(request), cancellation, readReply, vendorFailure);
}

}  // namespace quilmora
