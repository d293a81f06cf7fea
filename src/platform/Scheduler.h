#pragma once

#include <chrono>
#include <functional>
#include <map>

#include <QObject>

namespace quilmora {

// Runs work on the main thread after a delay. Destroying the scheduler drops what has not run.
class Scheduler {
 public:
  using Task = quint64;  // 0 means no task
  virtual ~Scheduler() = default;
  // A delay of 0 means the next turn of the main loop.
  virtual Task after(std::chrono::milliseconds delay, std::function<void()> work) = 0;
  virtual void cancel(Task task) = 0;
};

class TimerScheduler final : public Scheduler {
 public:
  Task after(std::chrono::milliseconds delay, std::function<void()> work) override;
  void cancel(Task task) override;

 private:
  QObject m_owner;
  std::map<Task, QObject*> m_timers;
  Task m_last = 0;
};

// Time passes only in advance().
class ManualScheduler final : public Scheduler {
 public:
  Task after(std::chrono::milliseconds delay, std::function<void()> work) override;
  void cancel(Task task) override { m_waiting.erase(task); }
  // Runs everything due within `step`, in the order of due times, including work scheduled meanwhile.
  void advance(std::chrono::milliseconds step);
  std::size_t waitingCount() const { return m_waiting.size(); }

 private:
  struct Waiting {
    std::chrono::milliseconds due;
    std::function<void()> work;
  };
  std::map<Task, Waiting> m_waiting;
  std::chrono::milliseconds m_now{0};
  Task m_last = 0;
};

}  // namespace quilmora
