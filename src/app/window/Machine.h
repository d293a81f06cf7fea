#pragma once

#include <functional>

#include <QString>

#include "ai/MockProvider.h"
#include "ai/ProviderChoice.h"
#include "editor/MindMapViewModel.h"
#include "editor/RecentFiles.h"

class QThreadPool;

namespace quilmora {

class Alerts;
class Clipboard;
class DesktopAppearance;
class FileDialogs;
class FileWriter;
class HttpTransport;
class KeyStore;
class Look;
class OnDeviceModel;
class OpeningMark;
class Scheduler;

// Everything of the machine that the application uses. All must outlive it. Tests pass in-memory twins, and the
// application cannot tell the difference.
struct Machine {
  const Clock& clock;
  SettingsStore& settings;
  Bookmarks& bookmarks;
  Log& log;
  FileWriter& writer;
  Scheduler& scheduler;
  FileDialogs& panels;
  const Clipboard& clipboard;
  Alerts& alerts;
  Look& look;
  QString defaultFolder;            // the user's Documents/Quilmora
  std::function<void()> terminate;  // ends the process's event loop
  KeyStore& keys;
  HttpTransport& transport;
  OnDeviceModel& onDeviceModel;
  RecentFiles::DesktopList desktopList = {};
  OpeningMark* openingMark = nullptr;
  QThreadPool* savingPool = nullptr;  // of one thread; without one, saving blocks
  QString stateFolder = {};           // without one, nothing is kept between saves
  QString claudeHost = ClaudeProvider::publicHost();
  QString openAIHost = OpenAIProvider::publicHost();

  AIProviders aiProviders() const {
    return {settings,   keys,      transport, onDeviceModel, [] { return std::make_shared<MockProvider>(); },
            claudeHost, openAIHost};
  }
  EditorServices editorServices() const { return {clock, settings, bookmarks, log}; }
};

}  // namespace quilmora
