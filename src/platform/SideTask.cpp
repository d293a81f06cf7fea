#include "platform/SideTask.h"

#include <utility>

#include <QRunnable>
#include <QSemaphore>
#include <QThreadPool>

#include "platform/ThreadOrder.h"

namespace quilmora {

namespace {

class Run final : public QRunnable {
 public:
  explicit Run(std::function<void()> work) : m_work(std::move(work)), m_end(std::make_shared<QSemaphore>()) {}
  std::shared_ptr<QSemaphore> end() const { return m_end; }

  void run() override {
    orderAfter(this);
    m_work();
    // What the work holds goes before its end is told.
    m_work = nullptr;
    orderBefore(m_end.get());
    m_end->release();
  }

 private:
  std::function<void()> m_work;
  std::shared_ptr<QSemaphore> m_end;
};

}  // namespace

SideTask::SideTask(std::function<void()> work) {
  auto run = std::make_unique<Run>(std::move(work));
  std::shared_ptr<QSemaphore> end = run->end();
  orderBefore(run.get());
  if (!QThreadPool::globalInstance()->tryStart(run.get())) return;
  static_cast<void>(run.release());  // the pool deletes it
  m_end = std::move(end);
}

void SideTask::wait() {
  if (!m_end) return;
  m_end->acquire();
  orderAfter(m_end.get());
  m_end.reset();
}

}  // namespace quilmora
