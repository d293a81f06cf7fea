#include "ai/ProviderChoice.h"

#include "ai/AppleFoundationProvider.h"
#include "ai/LateProvider.h"
#include "platform/HttpTransport.h"
#include "platform/KeyStore.h"
#include "platform/OnDeviceModel.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

namespace {

using Provider = std::shared_ptr<AIProvider>;

QString choiceIn(const SettingsStore& settings) {
  return settings.text(settings::aiProvider).value_or(settings::settingDefault(settings::aiProvider).toString());
}

const QString claude = QStringLiteral("claude");
const QString openAI = QStringLiteral("openai");
const QString demo = QStringLiteral("demo");

template <class Vendor>
Provider keyedProvider(const AIProviders& providers, const QString& account, const QString& host) {
  const auto made = [&transport = providers.transport, offline = providers.offline,
                     host](const QString& key) -> Provider {
    if (key.isEmpty()) return offline();
    return std::make_shared<Vendor>(transport, key, host);
  };
  QFuture<QString> key = providers.keys.loadKey(account);
  if (key.isFinished()) return made(key.result());
  return std::make_shared<LateProvider>(std::make_shared<Vendor>(providers.transport, QString(), host), key.then(made));
}

Provider onDeviceProvider(const AIProviders& providers) {
  const Provider onDevice = std::make_shared<AppleFoundationProvider>(providers.onDevice);
  const auto choice = providers.onDevice.lookUp().then(
      [onDevice, offline = providers.offline](bool isThere) { return isThere ? onDevice : offline(); });
  return std::make_shared<LateProvider>(onDevice, choice);
}

QString sentTo(const QString& host) {
  return QStringLiteral("Sent to ") + host;
}

}  // namespace

std::shared_ptr<AIProvider> chosenProvider(const AIProviders& providers) {
  const QString choice = choiceIn(providers.settings);
  if (choice == openAI) return keyedProvider<OpenAIProvider>(providers, accounts::openAIKey, providers.openAIHost);
  if (choice == claude) return keyedProvider<ClaudeProvider>(providers, accounts::claudeKey, providers.claudeHost);
  if (choice == demo) return providers.offline();
  return onDeviceProvider(providers);
}

QString destinationText(const AIProviders& providers) {
  const QString choice = choiceIn(providers.settings);
  const auto hasKey = [&](const QString& account) {
    return !providers.keys.knownKey(account).value_or(QString()).isEmpty();
  };
  if (choice == openAI && hasKey(accounts::openAIKey)) return sentTo(providers.openAIHost);
  if (choice == claude && hasKey(accounts::claudeKey)) return sentTo(providers.claudeHost);
  const bool isOnDevice = choice != openAI && choice != claude && choice != demo;
  const QUrl address = providers.onDevice.address();
  if (isOnDevice && !address.isEmpty() && !isLoopback(address)) return sentTo(address.host());
  return QStringLiteral("Stays on this machine");
}

}  // namespace quilmora
