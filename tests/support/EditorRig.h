#pragma once

#include <QSignalSpy>

#include "editor/MindMapViewModel.h"
#include "platform/Bookmarks.h"
#include "platform/Clock.h"
#include "platform/Log.h"
#include "platform/SettingsStore.h"
#include "support/SmallMap.h"

namespace quilmora::test {

// An editor with only in-memory twins around it. The map was last changed an hour before the clock's time.
struct EditorRig {
  explicit EditorRig(MindMap map = {}) : editor(stamped(std::move(map), clock), {clock, settings, bookmarks, log}) {}

  const MindMap& map() const { return editor.mindMap(); }
  const Node& node(std::size_t index) const { return editor.mindMap().nodes[index]; }
  const Edge& edge(std::size_t index) const { return editor.mindMap().edges[index]; }
  QPointF position(std::size_t index) const { return node(index).position; }
  bool isStamped() const { return editor.mindMap().updatedAt == clock.now(); }

  ManualClock clock;
  MemorySettingsStore settings;
  PathBookmarks bookmarks;
  MemoryLog log;
  MindMapViewModel editor;

 private:
  static MindMap stamped(MindMap map, const Clock& clock) {
    map.createdAt = map.updatedAt = clock.now() - std::chrono::hours(1);
    return map;
  }
};

// Equality including the time stamps, which a map's own comparison ignores.
inline bool isVeryMap(const MindMap& a, const MindMap& b) {
  return a == b && a.createdAt == b.createdAt && a.updatedAt == b.updatedAt;
}

}  // namespace quilmora::test
