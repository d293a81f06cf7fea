#include "ai/OpenAIProvider.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "ai/Prompts.h"
#include "ai/ProviderCall.h"
#include "ai/ReplyParsing.h"
#include "ai/VendorReply.h"

namespace quilmora {

namespace {

constexpr int maxMapTokens = 4096;
constexpr int maxChatTokens = 2048;

QJsonObject message(const QString& role, const QString& content) {
  return {{QStringLiteral("role"), role}, {QStringLiteral("content"), content}};
}

QJsonObject requestBody(const QString& model, int maxTokens, const QJsonArray& messages) {
  return {{QStringLiteral("model"), model},
          {QStringLiteral("max_tokens"), maxTokens},
          {QStringLiteral("messages"), messages}};
}

}  // namespace

OpenAIProvider::OpenAIProvider(HttpTransport& transport, QString apiKey, QString host)
    : m_transport(transport), m_apiKey(std::move(apiKey)), m_host(std::move(host)) {}

QFuture<AIResponse> OpenAIProvider::generate(const AIRequest& request, const Cancellation& cancellation) {
  const QJsonArray messages{message(QStringLiteral("system"), systemPrompt(request)),
                            message(QStringLiteral("user"), userPrompt(request))};
  QJsonObject told = requestBody(model(), maxMapTokens, messages);
  told[u"response_format"] = QJsonObject{{QStringLiteral("type"), QStringLiteral("json_object")}};
  return ask<AIResponse>(told, cancellation, [](const QByteArray& body) {
    return AIResponse{parseTreeReply(openAIReplyText(body), ReplyVariant::openAI), bodyText(body)};
  });
}

QFuture<QString> OpenAIProvider::chat(const std::vector<ChatMessage>& messages, const QString& mapContext,
                                      const Cancellation& cancellation) {
  QJsonArray told{message(QStringLiteral("system"), chatPrompt() + mapContext)};
  for (const ChatMessage& each : messages) told.append(message(rawValue(each.role), each.content));
  return ask<QString>(requestBody(model(), maxChatTokens, told), cancellation,
                      [](const QByteArray& body) { return openAIReplyText(body); });
}

template <class Result, class Read>
QFuture<Result> OpenAIProvider::ask(const QJsonObject& body, const Cancellation& cancellation, Read read) {
  if (m_apiKey.isEmpty()) return failedCall<Result>(AIProviderError::noAPIKey());
  HttpRequest request;
  request.url = QUrl(QStringLiteral("https://") + m_host + QStringLiteral("/v1/chat/completions"));
  request.headers = {{"Content-Type", "application/json"}, {"Authorization", "Bearer " + keyHeader(m_apiKey)}};
  request.body = QJsonDocument(body).toJson(QJsonDocument::Compact);
  const auto readReply = [key = m_apiKey, read](const HttpReply& reply) { return read(acceptedBody(reply, key)); };
  return providerCall<Result>(m_transport.send(request), cancellation, readReply, vendorFailure);
}

}  // namespace quilmora
