#pragma once

#include "ai/AIProvider.h"

namespace quilmora {

class OnDeviceModel;

// The model on this machine: asked with one text that contains everything. Without a model, the call fails with an
// AIProviderError::invalidResponse that says so; platform/OnDeviceText rewords it for the user.
class AppleFoundationProvider final : public AIProvider {
 public:
  // The model must outlive every call.
  explicit AppleFoundationProvider(OnDeviceModel& session) : m_session(session) {}

  QString name() const override { return QStringLiteral("Apple (On-Device)"); }
  bool requiresAPIKey() const override { return false; }
  QFuture<AIResponse> generate(const AIRequest& request, const Cancellation& cancellation) override;
  QFuture<QString> chat(const std::vector<ChatMessage>& messages, const QString& mapContext,
                        const Cancellation& cancellation) override;

 private:
  OnDeviceModel& m_session;
};

}  // namespace quilmora
