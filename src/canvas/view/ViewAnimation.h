#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "editor/EditorState.h"
#include "platform/Clock.h"
#include "platform/Scheduler.h"

namespace quilmora {

// Glides the view of an editor to another zoom and offset in 0.3 seconds, slow at both ends. Every topic moves on a
// straight line. Whoever moves the view meanwhile ends the glide where he has it. No timer runs while nothing moves.
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

  // `finished` runs once, when the glide has ended in whatever way but its replacement by another start().
  void start(const View& target, std::function<void()> finished);
  // Goes on to another target, whether a glide is under way or not; `finished` of one under way stays.
  void redirect(const View& target) { start(target, std::exchange(m_finished, {})); }
  // The same without a glide.
  void jump(const View& target);
  // Ends a glide where the view is, or at its target.
  void stop();
  void finish();
  bool isRunning() const { return m_task != 0; }
  // Where the glide under way leads; the view as it stands without one.
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
