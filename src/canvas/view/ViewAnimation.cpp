#include "canvas/view/ViewAnimation.h"

#include <utility>

#include <QEasingCurve>

namespace quilmora {

void ViewAnimation::start(const View& target, std::function<void()> finished) {
  cancelTask();
  m_from = m_shown = present();
  m_to = target;
  m_finished = std::move(finished);
  m_start = m_clock.steadyNow();
  m_task = m_scheduler.after(frameInterval, [this] { step(); });
}

void ViewAnimation::cancelTask() {
  if (m_task) m_scheduler.cancel(std::exchange(m_task, 0));
}

void ViewAnimation::stop() {
  if (isRunning()) end();
}

void ViewAnimation::finish() {
  if (!isRunning()) return;
  if (present() == m_shown) show(m_to);
  end();
}

void ViewAnimation::jump(const View& target) {
  cancelTask();
  show(target);
  end();
}

void ViewAnimation::end() {
  cancelTask();
  if (const auto finished = std::exchange(m_finished, {})) finished();
}

void ViewAnimation::show(const View& view) {
  m_shown = view;
  m_editor.setCanvasZoom(view.zoom);
  m_editor.setCanvasOffset(view.offset);
}

void ViewAnimation::step() {
  m_task = 0;
  if (present() != m_shown) return end();
  const auto elapsed = m_clock.steadyNow() - m_start;
  if (elapsed >= duration) {
    show(m_to);
    return end();
  }
  const double progress = std::chrono::duration<double>(elapsed) / std::chrono::duration<double>(duration);
  const double eased = QEasingCurve(QEasingCurve::InOutQuad).valueForProgress(progress);
  m_task = m_scheduler.after(frameInterval, [this] { step(); });
  show({m_from.zoom + (m_to.zoom - m_from.zoom) * eased, m_from.offset + (m_to.offset - m_from.offset) * eased});
}

}  // namespace quilmora
