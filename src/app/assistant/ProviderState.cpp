#include "app/assistant/ProviderState.h"

#include <algorithm>

#include "platform/Futures.h"
#include "platform/KeyStore.h"
#include "platform/OnDeviceModel.h"
#include "platform/OnDeviceText.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

// The names of a choice. `account` is that of its key; the model on this machine has none.
struct ProviderState::Provider {
  enum class Needs { nothing, key, model };
  QString id;
  QString label;
  QString symbol;
  QString row;
  QString rowWhenMissing;
  Needs needs = Needs::nothing;
  QString account;
};

const std::vector<ProviderState::Provider>& ProviderState::providers() {
  using Needs = Provider::Needs;
  static const std::vector<Provider> table = {
      {QStringLiteral("apple"), QStringLiteral("Apple"), QStringLiteral("cpu"), QStringLiteral("Apple (On-Device)"),
       QStringLiteral("Apple (On-Device) — unavailable"), Needs::model, QString()},
      {QStringLiteral("claude"), QStringLiteral("Claude"), QStringLiteral("cloud"),
       QStringLiteral("Claude (Anthropic)"), QStringLiteral("Claude — no API key"), Needs::key, accounts::claudeKey},
      {QStringLiteral("openai"), QStringLiteral("OpenAI"), QStringLiteral("cloud"), QStringLiteral("OpenAI"),
       QStringLiteral("OpenAI — no API key"), Needs::key, accounts::openAIKey},
      {QStringLiteral("demo"), QStringLiteral("Offline"), QStringLiteral("bolt"), QStringLiteral("Smart (Offline)"),
       QStringLiteral("Smart (Offline)"), Needs::nothing, QString()},
  };
  return table;
}

ProviderState::ProviderState(AIProviders providers, SettingsStore& settings)
    : m_providers(std::move(providers)), m_settings(settings) {
  connect(&m_providers.keys, &KeyStore::changed, this, &ProviderState::changed);
  connect(&settings.changes(), &SettingsChanges::changed, this, [this](const QString& key) {
    if (key != settings::aiProvider) return;
    check();
    Q_EMIT changed();
  });
}

const ProviderState::Provider& ProviderState::provider() const {
  const QString choice =
      m_settings.text(settings::aiProvider).value_or(settings::settingDefault(settings::aiProvider).toString());
  const auto found = std::ranges::find(providers(), choice, &Provider::id);
  return found == providers().end() ? providers().front() : *found;
}

QString ProviderState::chosen() const {
  return provider().id;
}

QString ProviderState::label() const {
  return onDeviceText(provider().label);
}

QString ProviderState::symbol() const {
  return provider().symbol;
}

// Something unknown is not missing.
bool ProviderState::isMissing(const Provider& provider) const {
  if (provider.needs == Provider::Needs::model) return !m_providers.onDevice.isThere().value_or(true);
  if (provider.needs == Provider::Needs::key) {
    const auto key = m_providers.keys.knownKey(provider.account);
    return key && key->isEmpty();
  }
  return false;
}

QString ProviderState::warning() const {
  const Provider& chosen = provider();
  if (!isMissing(chosen)) return {};
  return chosen.needs == Provider::Needs::key ? QStringLiteral("API key missing — using Offline mode")
                                              : onDeviceText(QStringLiteral("Requires macOS 26 — using Offline mode"));
}

QString ProviderState::destination() const {
  return destinationText(m_providers);
}

std::vector<ProviderState::Row> ProviderState::rows() const {
  std::vector<Row> rows;
  for (const Provider& each : providers())
    rows.push_back({each.id, onDeviceText(isMissing(each) ? each.rowWhenMissing : each.row), each.symbol});
  return rows;
}

void ProviderState::choose(const QString& id) {
  if (m_settings.text(settings::aiProvider) == id) return check();
  m_settings.setText(settings::aiProvider, id);
}

void ProviderState::look(const Provider& provider) {
  const auto tell = [this](const auto&) { Q_EMIT changed(); };
  if (provider.needs == Provider::Needs::model) whenFinished(m_providers.onDevice.lookUp(), this, tell, tell);
  if (provider.needs == Provider::Needs::key)
    whenFinished(m_providers.keys.loadKey(provider.account), this, tell, tell);
}

void ProviderState::check() {
  look(provider());
}

void ProviderState::lookAtAll() {
  for (const Provider& each : providers()) look(each);
}

}  // namespace quilmora
