#pragma once

#include "ai/AIProvider.h"

class QJsonObject;

namespace quilmora {

class HttpTransport;

// Anthropic's models, over their messages endpoint.
class ClaudeProvider final : public AIProvider {
 public:
  static QString publicHost() { return QStringLiteral("api.anthropic.com"); }

  // The transport outlives every call. `host` may name a port.
  ClaudeProvider(HttpTransport& transport, QString apiKey, QString host = publicHost());

  QString name() const override { return QStringLiteral("Claude"); }
  bool requiresAPIKey() const override { return true; }
  QString model() const { return QStringLiteral("claude-sonnet-4-20250514"); }
  QFuture<AIResponse> generate(const AIRequest& request, const Cancellation& cancellation) override;
  QFuture<QString> chat(const std::vector<ChatMessage>& messages, const QString& mapContext,
                        const Cancellation& cancellation) override;

 private:
  template <class Result, class Read>
  QFuture<Result> ask(const QJsonObject& body, const Cancellation& cancellation, Read read);

  HttpTransport& m_transport;
  const QString m_apiKey;
  const QString m_host;
};

}  // namespace quilmora
