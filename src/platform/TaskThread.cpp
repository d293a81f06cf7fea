#include "platform/TaskThread.h"

#include <system_error>
#include <utility>

namespace quilmora {

TaskThread::~TaskThread() {
  {
    const std::lock_guard lock(m_mutex);
    m_isEnding = true;
    m_tasks.clear();
  }
  m_hasChanged.notify_all();
  if (m_thread.joinable()) m_thread.join();
}

void TaskThread::post(std::function<void()> task) {
  if (!m_thread.joinable()) {
    try {
      m_thread = std::thread([this] { work(); });
    } catch (const std::system_error&) {
      task();
      return;
    }
  }
  {
    const std::lock_guard lock(m_mutex);
    rethrow();
    m_tasks.push_back(std::move(task));
  }
  m_hasChanged.notify_all();
}

void TaskThread::finish() {
  std::unique_lock lock(m_mutex);
  m_hasChanged.wait(lock, [this] { return m_tasks.empty() && !m_isRunning; });
  rethrow();
}

void TaskThread::rethrow() const {
  if (m_failure) std::rethrow_exception(m_failure);
}

void TaskThread::work() {
  std::unique_lock lock(m_mutex);
  for (;;) {
    m_hasChanged.wait(lock, [this] { return m_isEnding || !m_tasks.empty(); });
    if (m_isEnding) return;
    const std::function<void()> task = std::exchange(m_tasks.front(), {});
    m_tasks.pop_front();
    m_isRunning = true;
    lock.unlock();
    std::exception_ptr failure;
    try {
      task();
    } catch (...) {
      failure = std::current_exception();
    }
    lock.lock();
    m_isRunning = false;
    if (failure) {
      m_failure = failure;
      m_tasks.clear();
    }
    m_hasChanged.notify_all();
  }
}

}  // namespace quilmora
