#include "platform/SideTask.h"

#include <utility>

#include <QSemaphore>
#include <QThreadPool>

#include "platform/ThreadOrder.h"

namespace quilmora {

SideTask::SideTask(std::function<void()> work) {
  auto end = std::make_shared<QSemaphore>();
  orderBefore(end.get());
  const bool isStarted = QThreadPool::globalInstance()->tryStart([end, work = std::move(work)]() mutable {
    orderAfter(end.get());
    work();
    // What the work holds goes before its end is told.
    work = nullptr;
    orderBefore(end.get());
    end->release();
  });
  if (isStarted) m_end = std::move(end);
}

void SideTask::wait() {
  if (!m_end) return;
  m_end->acquire();
  orderAfter(m_end.get());
  m_end.reset();
}

}  // namespace quilmora
