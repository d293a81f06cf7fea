#pragma once

#include "ai/AIProvider.h"

namespace quilmora {

// The offline generator: answers from patterns and tables, without a model or a network, at once and without failing.
class MockProvider final : public AIProvider {
 public:
  QString name() const override { return QStringLiteral("Smart (Offline)"); }
  bool requiresAPIKey() const override { return false; }
  QFuture<AIResponse> generate(const AIRequest& request, const Cancellation& cancellation) override;
  QFuture<QString> chat(const std::vector<ChatMessage>& messages, const QString& mapContext,
                        const Cancellation& cancellation) override;
};

// The same as plain functions.
AIResponse offlineGenerate(const AIRequest& request);
QString offlineChat(const std::vector<ChatMessage>& messages, const QString& mapContext);

}  // namespace quilmora
