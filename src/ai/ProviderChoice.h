#pragma once

#include <functional>
#include <memory>

#include "ai/AIProvider.h"
#include "ai/ClaudeProvider.h"
#include "ai/OpenAIProvider.h"

namespace quilmora {

class HttpTransport;
class KeyStore;
class OnDeviceModel;
class SettingsStore;

// What the providers depend on. All of it must outlive every call.
struct AIProviders {
  const SettingsStore& settings;
  KeyStore& keys;
  HttpTransport& transport;
  OnDeviceModel& onDevice;
  // Makes the offline generator, which replaces any provider that is not available.
  std::function<std::shared_ptr<AIProvider>()> offline;
  QString claudeHost = ClaudeProvider::publicHost();
  QString openAIHost = OpenAIProvider::publicHost();
};

// A new provider by the setting `ai_provider`, with the key as currently stored. Without a key, or without a model on
// this machine, it is the offline generator. While that is still unknown, the provider's calls wait.
std::shared_ptr<AIProvider> chosenProvider(const AIProviders& providers);

// Where the chosen provider sends requests, as far as is known now: "Stays on this machine" or "Sent to" and a host.
QString destinationText(const AIProviders& providers);

}  // namespace quilmora
