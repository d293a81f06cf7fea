#pragma once

#include <cmath>

#include "canvas/view/CanvasGestures.h"
#include "canvas/view/CanvasKeys.h"
#include "canvas/view/CanvasMaps.h"
#include "editor/WindowCommands.h"
#include "platform/Bookmarks.h"
#include "platform/Log.h"
#include "platform/Scheduler.h"
#include "platform/SettingsStore.h"

namespace quilmora::test {

// An editor and the canvas's state machine over a map, without a window. Topics are 100 × 40 boxes; a test adds
// whatever else is on the canvas.
class CanvasRig {
 public:
  explicit CanvasRig(MindMap map)
      : editor(std::move(map), EditorServices{clock, settings, bookmarks, log}),
        commands(editor),
        gestures(
            editor, clock, [this](QPointF point) { return targetAt(point); },
            [this](QPointF point) { return targetAt(point); }),
        keys(editor, commands, scheduler, gestures) {}

  ManualClock clock;
  ManualScheduler scheduler;
  MemorySettingsStore settings;
  PathBookmarks bookmarks;
  MemoryLog log;
  MindMapViewModel editor;
  WindowCommands commands;
  CanvasGestures gestures;
  CanvasKeys keys;
  // Small targets above the topics, each a disc of radius 5.
  std::vector<std::pair<QPointF, CanvasTarget>> extraTargets;

  const CanvasState& state() const { return gestures.state(); }
  QPointF positionOf(int number) { return editor.nodeByID(topicId(number))->position; }

  void press(QPointF at, InputModifiers modifiers = {}, PointerButton button = PointerButton::left) {
    gestures.press({at, button, modifiers});
  }
  void move(QPointF to, InputModifiers modifiers = {}) { gestures.move({to, PointerButton::none, modifiers}); }
  void release(QPointF at, InputModifiers modifiers = {}, PointerButton button = PointerButton::left) {
    gestures.release({at, button, modifiers});
  }
  void tap(QPointF at, InputModifiers modifiers = {}) {
    press(at, modifiers);
    release(at, modifiers);
  }
  void drag(QPointF from, QPointF to, InputModifiers modifiers = {}) {
    press(from, modifiers);
    move(to, modifiers);
    release(to, modifiers);
  }
  void look(double zoom, QPointF offset) {
    editor.setCanvasZoom(zoom);
    editor.setCanvasOffset(offset);
  }

 private:
  CanvasTarget targetAt(QPointF point) {
    for (const auto& [center, target] : extraTargets)
      if (std::hypot(point.x() - center.x(), point.y() - center.y()) <= 5.0) return target;
    const auto& nodes = editor.mindMap().nodes;
    for (std::size_t i = nodes.size(); i-- > 0;) {
      const QPointF offset = point - nodes[i].position;
      if (std::abs(offset.x()) <= 50.0 && std::abs(offset.y()) <= 20.0) return {CanvasTarget::Kind::node, nodes[i].id};
    }
    return {};
  }
};

inline constexpr InputModifiers shift{.shift = true};
inline constexpr InputModifiers command{.command = true};
inline constexpr InputModifiers option{.option = true};

}  // namespace quilmora::test
