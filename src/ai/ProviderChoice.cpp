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
Provider keyedProvider(const AIBackEnds& backEnds, const QString& account, const QString& host) {
  const auto made = [&transport = backEnds.transport, offline = backEnds.offline,
                     host](const QString& key) -> Provider {
    if (key.isEmpty()) return offline();
    return std::make_shared<Vendor>(transport, key, host);
  };
  QFuture<QString> key = backEnds.keys.loadKey(account);
  if (key.isFinished()) return made(key.result());
  return std::make_shared<LateProvider>(std::make_shared<Vendor>(backEnds.transport, QString(), host), key.then(made));
}

Provider onDeviceProvider(const AIBackEnds& backEnds) {
  const Provider onDevice = std::make_shared<AppleFoundationProvider>(backEnds.onDevice);
  const auto choice = backEnds.onDevice.lookUp().then(
      [onDevice, offline = backEnds.offline](bool isThere) { return isThere ? onDevice : offline(); });
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
  if (choice == demo) return backEnds.offline();
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
