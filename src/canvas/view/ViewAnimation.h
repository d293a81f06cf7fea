#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "editor/EditorState.h"
#include "platform/Clock.h"
#include "platform/Scheduler.h"

namespace quilmora {

// Moves the view of an editor to another zoom and offset in 0.3 seconds, slowly at both ends. Every topic moves on a
// straight line. If anything else moves the view meanwhile, the glide ends there. No timer runs while nothing moves.
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
  ~ViewAnimation() { cancelTask(); }

  // `finished` runs once, when the glide has ended in any way except by another start().
  void start(const View& target, std::function<void()> finished);
  // Continues to another target, whether a glide is in progress or not; its `finished` is kept.
  void redirect(const View& target) { start(target, std::exchange(m_finished, {})); }
  // The same without a glide.
  void jump(const View& target);
  // Ends a glide at the current view, or at its target.
  void stop();
  void finish();
  bool isRunning() const { return m_task != 0; }
  // The target of the current glide; without one, the current view.
  View target() const { return isRunning() && present() == m_shown ? m_to : present(); }

 private:
  View present() const { return {m_editor.canvasZoom(), m_editor.canvasOffset()}; }
  void show(const View& view);
  void step();
  void end();
  void cancelTask();

  EditorState& m_editor;
  Scheduler& m_scheduler;
  const Clock& m_clock;
  View m_from;
  View m_to;
  View m_shown;
  SteadyPoint m_start;
  std::function<void()> m_finished;
  Scheduler::Task m_task = 0;
};

}  // namespace quilmora
