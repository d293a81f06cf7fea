#pragma once

#include <functional>
#include <memory>

class QSemaphore;

namespace quilmora {

// Work that a free thread of the global pool does while the caller goes on, such as its share of one job.
class SideTask {
 public:
  SideTask() = default;
  // Starts `work`, which must not throw, unless all threads are busy.
  explicit SideTask(std::function<void()> work);

  // Whether the work was started; otherwise the caller has to do it.
  bool isStarted() const { return m_end != nullptr; }
  // Returns when started work has ended. Destroying the task does not wait.
  void wait();

 private:
  std::shared_ptr<QSemaphore> m_end;
};

}  // namespace quilmora
