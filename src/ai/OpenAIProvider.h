#pragma once

#include "ai/VendorProvider.h"

namespace quilmora {

// OpenAI's models, over their chat completions endpoint.
class OpenAIProvider final : public VendorProvider {
 public:
  static QString publicHost() { return QStringLiteral("api.openai.com"); }

  OpenAIProvider(HttpTransport& transport, QString apiKey, QString host = publicHost());

  QString name() const override { return QStringLiteral("OpenAI"); }
  QString model() const override { return QStringLiteral("gpt-4o"); }

 protected:
  QString path() const override { return QStringLiteral("/v1/chat/completions"); }
  Headers headers(const QByteArray& key) const override;
  QJsonObject generateBody(const AIRequest& request) const override;
  QJsonObject chatBody(const std::vector<ChatMessage>& messages, const QString& mapContext) const override;
};

}  // namespace quilmora
