#include "ai/AppleFoundationProvider.h"

#include "ai/Prompts.h"
#include "ai/ProviderCall.h"
#include "ai/ReplyParsing.h"
#include "platform/OnDeviceModel.h"

namespace quilmora {

namespace {

const QString notEnabled = QStringLiteral(
    "Apple Intelligence is not enabled. Go to System Settings → Apple Intelligence & Siri → turn ON Apple "
    "Intelligence.");
const QString tryAgain = QStringLiteral(" Then try again, or switch to Claude/OpenAI in Settings → AI.");

// A failure is classified by its text alone, including failures to read the reply.
std::exception_ptr judged(const std::exception& error, const QString& notEnabledWords) {
  const QString words = errorDescription(error);
  for (const char* sign : {"not available", "not enabled", "intelligence"})
    if (words.contains(QLatin1String(sign)))
      return std::make_exception_ptr(AIProviderError::invalidResponse(notEnabledWords));
  return std::make_exception_ptr(AIProviderError::networkError(words));
}

QString chatText(const std::vector<ChatMessage>& messages, const QString& mapContext) {
  QString text = chatPrompt() + mapContext + QStringLiteral("\n\n");
  for (const ChatMessage& each : messages) {
    const QString speaker = each.role == ChatRole::user ? QStringLiteral("User") : QStringLiteral("Assistant");
    text += speaker + QStringLiteral(": ") + each.content + u'\n';
  }
  return text + QStringLiteral("Assistant:");
}

}  // namespace

QFuture<AIResponse> AppleFoundationProvider::generate(const AIRequest& request, const Cancellation& cancellation) {
  const QString prompt = systemPrompt(request) + QStringLiteral("\n\nUser request:\n") + userPrompt(request);
  return providerCall<AIResponse>(
      m_session.respond(prompt), cancellation,
      [](const QString& text) {
        return AIResponse{parseTreeReply(text, ReplyVariant::onDevice), text};
      },
      [](const std::exception& error) { return judged(error, notEnabled + tryAgain); });
}

QFuture<QString> AppleFoundationProvider::chat(const std::vector<ChatMessage>& messages, const QString& mapContext,
                                               const Cancellation& cancellation) {
  return providerCall<QString>(
      m_session.respond(chatText(messages, mapContext)), cancellation, [](const QString& text) { return text; },
      [](const std::exception& error) { return judged(error, notEnabled); });
}

}  // namespace quilmora
