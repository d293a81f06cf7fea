#pragma once

#include "ai/VendorProvider.h"

namespace quilmora {

// Anthropic's models, over their messages endpoint.
class ClaudeProvider final : public VendorProvider {
 public:
  static QString publicHost() { return QStringLiteral("api.anthropic.com"); }

  ClaudeProvider(HttpTransport& transport, QString apiKey, QString host = publicHost());

  QString name() const override { return QStringLiteral("Claude"); }
  QString model() const override { return QStringLiteral("claude-sonnet-4-20250514"); }

 protected:
  QString path() const override { return QStringLiteral("/v1/messages"); }
  Headers headers(const QByteArray& key) const override;
  QJsonObject generateBody(const AIRequest& request) const override;
  QJsonObject chatBody(const std::vector<ChatMessage>& messages, const QString& mapContext) const override;
};

}  // namespace quilmora
