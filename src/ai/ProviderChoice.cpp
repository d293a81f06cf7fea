#include "ai/ProviderChoice.h"

#include "ai/AppleFoundationProvider.h"
#include "ai/LateProvider.h"
#include "ai/MockProvider.h"
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
Provider keyedProvider(const AIBackEnds& backEnds, const QString& account, const QString& host) {
  const auto made = [&transport = backEnds.transport, host](const QString& key) -> Provider {
    if (key.isEmpty()) return std::make_shared<MockProvider>();
    return std::make_shared<Vendor>(transport, key, host);
  };
  if (const auto key = backEnds.keys.knownKey(account)) return made(*key);
  return std::make_shared<LateProvider>(std::make_shared<Vendor>(backEnds.transport, QString(), host),
                                        backEnds.keys.loadKey(account).then(made));
}

Provider onDeviceProvider(const AIBackEnds& backEnds) {
  const Provider onDevice = std::make_shared<AppleFoundationProvider>(backEnds.onDevice);
  const auto choice = backEnds.onDevice.lookUp().then(
      [onDevice](bool isThere) -> Provider { return isThere ? onDevice : std::make_shared<MockProvider>(); });
  return std::make_shared<LateProvider>(onDevice, choice);
}

QString sentTo(const QString& host) {
  return QStringLiteral("Sent to ") + host;
}

}  // namespace

std::shared_ptr<AIProvider> chosenProvider(const AIBackEnds& backEnds) {
  const QString choice = choiceIn(backEnds.settings);
  if (choice == openAI) return keyedProvider<OpenAIProvider>(backEnds, accounts::openAIKey, backEnds.openAIHost);
  if (choice == claude) return keyedProvider<ClaudeProvider>(backEnds, accounts::claudeKey, backEnds.claudeHost);
  if (choice == demo) return std::make_shared<MockProvider>();
  return onDeviceProvider(backEnds);
}

QString destinationText(const AIBackEnds& backEnds) {
  const QString choice = choiceIn(backEnds.settings);
  const auto hasKey = [&](const QString& account) {
    return !backEnds.keys.knownKey(account).value_or(QString()).isEmpty();
  };
  if (choice == openAI && hasKey(accounts::openAIKey)) return sentTo(backEnds.openAIHost);
  if (choice == claude && hasKey(accounts::claudeKey)) return sentTo(backEnds.claudeHost);
  const bool isOnDevice = choice != openAI && choice != claude && choice != demo;
  const QUrl address = backEnds.onDevice.address();
  if (isOnDevice && !address.isEmpty() && !isLoopback(address)) return sentTo(address.host());
  return QStringLiteral("Stays on this machine");
}

}  // namespace quilmora
