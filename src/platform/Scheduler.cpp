#include "platform/Scheduler.h"

#include <algorithm>
#include <limits>

#include <QTimer>

namespace quilmora {

Scheduler::Task TimerScheduler::after(std::chrono::milliseconds delay, std::function<void()> work) {
  const Task task = ++m_last;
  auto* timer = new QTimer(&m_owner);
  timer->setSingleShot(true);
  timer->setTimerType(Qt::PreciseTimer);
  QObject::connect(timer, &QTimer::timeout, &m_owner, [this, task, timer, work = std::move(work)] {
    m_timers.erase(task);
    timer->deleteLater();
    // The work may destroy this scheduler, and with it the timer's copy.
    const std::function<void()> running = work;
    running();
  });
  constexpr std::chrono::milliseconds longest{std::numeric_limits<int>::max()};
  timer->start(std::clamp(delay, std::chrono::milliseconds::zero(), longest));
  m_timers.emplace(task, timer);
  return task;
}

void TimerScheduler::cancel(Task task) {
  const auto found = m_timers.find(task);
  if (found == m_timers.end()) return;
  delete found->second;
  m_timers.erase(found);
}

Scheduler::Task ManualScheduler::after(std::chrono::milliseconds delay, std::function<void()> work) {
  const Task task = ++m_last;
  m_waiting.emplace(task, Waiting{m_now + std::max(delay, std::chrono::milliseconds::zero()), std::move(work)});
  return task;
}

void ManualScheduler::advance(std::chrono::milliseconds step) {
  const std::chrono::milliseconds end = m_now + step;
  while (true) {
    const auto next = std::ranges::min_element(m_waiting, {}, [](const auto& entry) { return entry.second.due; });
    if (next == m_waiting.end() || next->second.due > end) break;
    m_now = next->second.due;
    const std::function<void()> work = std::move(next->second.work);
    m_waiting.erase(next);
    work();
  }
  m_now = end;
}

}  // namespace quilmora
