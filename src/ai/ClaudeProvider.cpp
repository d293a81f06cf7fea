#include "ai/ClaudeProvider.h"

#include "ai/Prompts.h"
#include "ai/VendorReply.h"

namespace quilmora {

namespace {

constexpr int maxTokens = 4096;

QJsonObject requestBody(const QString& model, const QString& system, const QJsonArray& messages) {
  return {{QStringLiteral("model"), model},
          {QStringLiteral("max_tokens"), maxTokens},
          {QStringLiteral("system"), system},
          {QStringLiteral("messages"), messages}};
}

}  // namespace

ClaudeProvider::ClaudeProvider(HttpTransport& transport, QString apiKey, QString host)
    : VendorProvider(transport, std::move(apiKey), std::move(host), {claudeReplyText, ReplyVariant::claude}) {}

VendorProvider::Headers ClaudeProvider::headers(const QByteArray& key) const {
  return {{"content-type", "application/json"}, {"x-api-key", key}, {"anthropic-version", "2023-06-01"}};
}

QJsonObject ClaudeProvider::generateBody(const AIRequest& request) const {
  return requestBody(model(), systemPrompt(request), {message(QStringLiteral("user"), userPrompt(request))});
}

QJsonObject ClaudeProvider::chatBody(const std::vector<ChatMessage>& messages, const QString& mapContext) const {
  return requestBody(model(), chatPrompt() + mapContext, dialogue(messages));
}

}  // namespace quilmora
