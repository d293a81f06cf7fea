#pragma once

#include <memory>

#include "ai/AIProvider.h"

namespace quilmora {

// Stands in for a provider that is still being chosen: its calls wait for the choice, which never fails.
class LateProvider final : public AIProvider {
 public:
  // `expected` supplies name and key until then.
  LateProvider(std::shared_ptr<AIProvider> expected, const QFuture<std::shared_ptr<AIProvider>>& choice)
      : m_expected(std::move(expected)), m_choice(choice) {}

  QString name() const override { return m_expected->name(); }
  bool requiresAPIKey() const override { return m_expected->requiresAPIKey(); }
  QFuture<AIResponse> generate(const AIRequest& request, const Cancellation& cancellation) override;
  QFuture<QString> chat(const std::vector<ChatMessage>& messages, const QString& mapContext,
                        const Cancellation& cancellation) override;

 private:
  std::shared_ptr<AIProvider> m_expected;
  QFuture<std::shared_ptr<AIProvider>> m_choice;
};

}  // namespace quilmora
