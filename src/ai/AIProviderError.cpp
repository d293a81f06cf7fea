#include "ai/AIProviderError.h"

#include "ai/UserCharacters.h"

namespace quilmora {

namespace {

QString describe(AIProviderError::Case kind, const QString& payload) {
  constexpr int shownCharacters = 100;
  switch (kind) {
    case AIProviderError::Case::networkError:
      return QStringLiteral("Network error: ") + payload;
    case AIProviderError::Case::invalidResponse:
      return QStringLiteral("Could not parse AI response: ") + firstCharacters(payload, shownCharacters);
    case AIProviderError::Case::rateLimited:
      return QStringLiteral("Rate limited — try again shortly");
    case AIProviderError::Case::authenticationFailed:
      return QStringLiteral("Invalid API key");
    case AIProviderError::Case::noAPIKey:
      return QStringLiteral("No API key configured. Set it in Settings > AI.");
    case AIProviderError::Case::cancelled:
      break;
  }
  return QStringLiteral("Request cancelled");
}

}  // namespace

AIProviderError::AIProviderError(Case kind, const QString& payload)
    : std::runtime_error(describe(kind, payload).toStdString()), m_kind(kind), m_payload(payload) {}

AIProviderError AIProviderError::networkError(const QString& underlying) {
  return {Case::networkError, underlying};
}

AIProviderError AIProviderError::invalidResponse(const QString& raw) {
  return {Case::invalidResponse, raw};
}

QString errorDescription(const std::exception& error) {
  return QString::fromUtf8(error.what());
}

}  // namespace quilmora
