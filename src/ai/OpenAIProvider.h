#pragma once

#include "ai/AIProvider.h"

class QJsonObject;

namespace quilmora {

class HttpTransport;

// OpenAI's models, over their chat completions endpoint.
class OpenAIProvider final : public AIProvider {
 public:
  static QString publicHost() { return QStringLiteral("api.openai.com"); }

  // The transport outlives every call. `host` may name a port.
  OpenAIProvider(HttpTransport& transport, QString apiKey, QString host = publicHost());

  QString name() const override { return QStringLiteral("OpenAI"); }
  bool requiresAPIKey() const override { return true; }
  QString model() const { return QStringLiteral("gpt-4o"); }
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
