#include "platform/OnDeviceText.h"

#include <array>

namespace quilmora {

namespace {

struct Wording {
  QString told;
  QString shown;
};

}  // namespace

QString onDeviceText(const QString& text) {
  static const std::array<Wording, 7> labels = {{
      {QStringLiteral("Apple"), QStringLiteral("On-Device")},
      {QStringLiteral("Apple (On-Device)"), QStringLiteral("On-Device")},
      {QStringLiteral("Apple (On-Device) — unavailable"), QStringLiteral("On-Device — no model server")},
      {QStringLiteral("Requires macOS 26 — using Offline mode"),
       QStringLiteral("No local model server answers — using Offline mode")},
      {QStringLiteral("Using on-device Apple Foundation Models. No API key needed."),
       QStringLiteral("Using a model server on this machine. No API key needed.")},
      {QStringLiteral("Apple Intelligence requires macOS 26 (Tahoe) or later."),
       QStringLiteral("On-Device needs a model server on this machine, and none answers now.")},
      {QStringLiteral("On older macOS, Quilmora falls back to Smart mode — a built-in offline generator that produces "
                      "example maps but no real AI reasoning. For real AI, pick Claude or OpenAI above and paste an "
                      "API key."),
       QStringLiteral("Without one, Quilmora falls back to Smart mode — a built-in offline generator that produces "
                      "example maps but no real AI reasoning. For real AI, pick Claude or OpenAI above and paste an "
                      "API key.")},
  }};
  for (const Wording& label : labels)
    if (text == label.told) return label.shown;
  // In a message the sentence may be cut off at any point.
  static const QString told = QStringLiteral(
      "Apple Intelligence is not enabled. Go to System Settings → Apple Intelligence & Siri → turn ON Apple "
      "Intelligence. Then try again, or switch to Claude/OpenAI in Settings → AI.");
  static const QString shown = QStringLiteral(
      "No local model answers. Start a model server on this machine, wait until its model is loaded, and try again.");
  static const QString beginning = QStringLiteral("Apple Intelligence is not enabled.");
  const qsizetype start = text.indexOf(beginning);
  if (start < 0) return text;
  qsizetype length = beginning.size();
  while (length < told.size() && start + length < text.size() && text[start + length] == told[length]) ++length;
  return text.left(start) + shown + text.mid(start + length);
}

}  // namespace quilmora
