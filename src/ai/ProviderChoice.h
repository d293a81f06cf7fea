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

// What the back ends stand on. All outlive every call.
struct AIBackEnds {
  const SettingsStore& settings;
  KeyStore& keys;
  HttpTransport& transport;
  OnDeviceModel& onDevice;
  // Makes the offline generator, which takes the place of every other that is not to be had.
  std::function<std::shared_ptr<AIProvider>()> offline;
  QString claudeHost = ClaudeProvider::publicHost();
  QString openAIHost = OpenAIProvider::publicHost();
};

// A new back end by the setting `ai_provider`, with the key as it is stored now. Without a key, or without a model on
// this machine, it is the offline generator. Where that is not known yet the back end's calls wait until it is.
std::shared_ptr<AIProvider> chosenProvider(const AIBackEnds& backEnds);

// Where the chosen back end sends what it is asked, as far as it is known now: "Stays on this machine" or "Sent to" and
// a host.
QString destinationText(const AIBackEnds& backEnds);

}  // namespace quilmora
