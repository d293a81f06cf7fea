#include "ai/OpenAIProvider.h"

#include "ai/Prompts.h"
#include "ai/VendorReply.h"

namespace quilmora {

namespace {

constexpr int maxMapTokens = 4096;
constexpr int maxChatTokens = 2048;

QJsonObject requestBody(const QString& model, int maxTokens, const QJsonArray& messages) {
  return {{QStringLiteral("model"), model},
          {QStringLiteral("max_tokens"), maxTokens},
          {QStringLiteral("messages"), messages}};
}

}  // namespace

OpenAIProvider::OpenAIProvider(HttpTransport& transport, QString apiKey, QString host)
    : VendorProvider(transport, std::move(apiKey), std::move(host), {openAIReplyText, ReplyVariant::openAI}) {}

VendorProvider::Headers OpenAIProvider::headers(const QByteArray& key) const {
  return {{"Content-Type", "application/json"}, {"Authorization", "Bearer " + key}};
}

QJsonObject OpenAIProvider::generateBody(const AIRequest& request) const {
  QJsonObject body = requestBody(
      model(), maxMapTokens,
      {message(QStringLiteral("system"), systemPrompt(request)), message(QStringLiteral("user"), userPrompt(request))});
  body[u"response_format"] = QJsonObject{{QStringLiteral("type"), QStringLiteral("json_object")}};
  return body;
}

QJsonObject OpenAIProvider::chatBody(const std::vector<ChatMessage>& messages, const QString& mapContext) const {
  QJsonArray told = dialogue(messages);
  told.prepend(message(QStringLiteral("system"), chatPrompt() + mapContext));
  return requestBody(model(), maxChatTokens, told);
}

}  // namespace quilmora
