#pragma once

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace quilmora {

// Runs tasks in the order they were posted, on a thread of its own; in the calling thread if the system has none left.
// A task that throws is the last one that runs. Destroying it waits for the running task and drops the others.
class TaskThread {
 public:
  TaskThread() = default;
  ~TaskThread();
  TaskThread(const TaskThread&) = delete;
  TaskThread& operator=(const TaskThread&) = delete;

  // Rethrows what an earlier task threw.
  void post(std::function<void()> task);
  // Waits for all tasks, and rethrows what one of them threw.
  void finish();

 private:
  void work();
  void rethrow() const;

  std::mutex m_mutex;
  std::condition_variable m_hasChanged;
  std::deque<std::function<void()>> m_tasks;
  std::exception_ptr m_failure;
  bool m_isRunning = false;
  bool m_isEnding = false;
  std::thread m_thread;
};

}  // namespace quilmora
