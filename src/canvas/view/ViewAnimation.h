#pragma once

#include <functional>
#include <optional>

#include "editor/EditorState.h"
#include "platform/Clock.h"
#include "platform/Scheduler.h"

namespace quilmora {

// Glides the view of an editor to another zoom and offset in 0.3 seconds, slow at both ends. Every topic moves on a
// straight line. Whoever moves the view meanwhile ends the glide. No timer runs while nothing moves.
class ViewAnimation {
 public:
  static constexpr std::chrono::milliseconds duration{300};
  static constexpr std::chrono::milliseconds frameInterval{16};

  struct View {
    double zoom = 1.0;
    QPointF offset;

    bool operator==(const View&) const = default;
  };

  ViewAnimation(EditorState& editor, Scheduler& scheduler, const Clock& clock)
      : m_editor(editor), m_scheduler(scheduler), m_clock(clock) {}
  ~ViewAnimation() { stop(); }

  // `finished` runs when the target is reached, and not when the glide is ended before.
  void start(const View& target, std::function<void()> finished);
  void stop();
  bool isRunning() const { return m_task != 0; }

 private:
  View present() const { return {m_editor.canvasZoom(), m_editor.canvasOffset()}; }
  void show(const View& view);
  void step();

  EditorState& m_editor;
  Scheduler& m_scheduler;
  const Clock& m_clock;
  View m_from;
  View m_to;
  View m_shown;
  TimePoint m_start;
  std::function<void()> m_finished;
  Scheduler::Task m_task = 0;
};

}  // namespace quilmora
