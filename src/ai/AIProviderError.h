#pragma once

#include <exception>
#include <stdexcept>

#include <QString>

namespace quilmora {

// How an AI provider fails. The description is the text shown to the user.
class AIProviderError : public std::runtime_error {
 public:
  enum class Case { networkError, invalidResponse, rateLimited, authenticationFailed, noAPIKey, cancelled };

  static AIProviderError networkError(const QString& underlying);
  // `raw` is the reply, or a sentence in its place; its first 100 characters are shown to the user.
  static AIProviderError invalidResponse(const QString& raw);
  static AIProviderError rateLimited() { return {Case::rateLimited, {}}; }
  static AIProviderError authenticationFailed() { return {Case::authenticationFailed, {}}; }
  static AIProviderError noAPIKey() { return {Case::noAPIKey, {}}; }
  static AIProviderError cancelled() { return {Case::cancelled, {}}; }

  Case kind() const { return m_kind; }
  // The underlying error's description, or the raw text; empty for the other cases.
  const QString& payload() const { return m_payload; }
  QString description() const { return QString::fromUtf8(what()); }

 private:
  AIProviderError(Case kind, const QString& payload);

  Case m_kind;
  QString m_payload;
};

// Why a JSON text is not a tree of topics, in the words of the JSON decoder.
class AITreeError : public std::runtime_error {
 public:
  explicit AITreeError(const QString& message) : std::runtime_error(message.toStdString()) {}
};

// A call was cancelled before it ended. Not a failure of the provider, and never shown as one.
class AICancelled : public std::runtime_error {
 public:
  AICancelled() : std::runtime_error("cancelled") {}
};

// The text shown to the user for any failure of a call.
QString errorDescription(const std::exception& error);

}  // namespace quilmora
