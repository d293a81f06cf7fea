#pragma once

#include "editor/AIWorkflows.h"
#include "editor/ChatSession.h"
#include "platform/HttpTransport.h"
#include "platform/KeyStore.h"
#include "platform/OnDeviceModel.h"
#include "platform/SettingsKeys.h"
#include "support/Await.h"
#include "support/EditorRig.h"
#include "support/ScriptedProvider.h"

namespace quilmora::test {

// An editor with its AI and only in-memory twins around it. Unless a test chooses another, the provider is the offline
// one, which is scripted.
struct AIRig : EditorRig {
  explicit AIRig(MindMap map = {}) : EditorRig(std::move(map)) {
    settings.setText(settings::aiProvider, QStringLiteral("demo"));
    editor.setLastKnownCanvasSize(QSizeF(1000.0, 600.0));
  }

  // Processes the pending events, and those they cause.
  static void settle() {
    for (int turn = 0; turn < 20; ++turn) QCoreApplication::processEvents();
  }
  bool isAsked(std::size_t count = 1) {
    return QTest::qWaitFor([&] { return offline->requests.size() + offline->told.size() >= count; });
  }
  bool isDone() {
    return QTest::qWaitFor([&] { return !workflows.aiIsGenerating(); });
  }

  MemoryKeyStore keys;
  MemoryHttpTransport transport;
  MemoryOnDeviceModel onDevice;
  std::shared_ptr<ScriptedProvider> offline = std::make_shared<ScriptedProvider>();
  AIWorkflows workflows{
      editor, {clock, settings, bookmarks, log}, {settings, keys, transport, onDevice, [this] { return offline; }}};
  ChatSession chat{editor, clock, workflows};
};

inline AITreeNode teaTree() {
  return AITreeNode(QStringLiteral("Tea"), {AITreeNode(QStringLiteral("Green")), AITreeNode(QStringLiteral("Black"))});
}

}  // namespace quilmora::test
