#pragma once

#include <chrono>

namespace quilmora {

// A point in time in UTC, with sub-second precision.
using TimePoint = std::chrono::sys_time<std::chrono::microseconds>;

// Where commands take the time from. Tests set it.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual TimePoint now() const = 0;
};

class SystemClock final : public Clock {
 public:
  TimePoint now() const override {
    return std::chrono::floor<std::chrono::microseconds>(std::chrono::system_clock::now());
  }
};

// Stands still until it is moved.
class ManualClock final : public Clock {
 public:
  explicit ManualClock(TimePoint start = TimePoint(std::chrono::seconds(1'700'000'000))) : m_now(start) {}
  TimePoint now() const override { return m_now; }
  void set(TimePoint now) { m_now = now; }
  void advance(std::chrono::microseconds step) { m_now += step; }

 private:
  TimePoint m_now;
};

}  // namespace quilmora
